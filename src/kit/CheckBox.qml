// A box with a label, for what waits for a button.
//   text: string; checked: bool; helpText: string; signal toggled()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.CheckBox {
    id: control

    property string helpText
    property bool ring: visualFocus

    implicitHeight: Theme.checkRowHeight
    implicitWidth: leftPadding + implicitContentWidth
    leftPadding: Theme.checkSize + (text === "" ? 0 : Theme.s8)
    focusPolicy: Qt.StrongFocus
    font: Theme.body.font

    HelpText.text: helpText
    Accessible.role: Accessible.CheckBox
    Accessible.name: text === "" ? helpText : text
    Accessible.onPressAction: Buttons.click(control)
    Accessible.onToggleAction: Buttons.click(control)
    Accessible.description: text === "" ? "" : helpText
    Accessible.checkable: true
    Accessible.checked: checked

    indicator: Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.checkSize
        height: Theme.checkSize
        radius: Theme.menuRowRadius
        color: !control.enabled ? Theme.none : control.checked ? Theme.accent : Theme.b1
        border.width: Theme.hairline
        border.color: !control.enabled ? Theme.t3 : control.checked ? Theme.accent
                    : control.hovered ? Theme.t2 : Theme.edge2

        Icon {
            anchors.centerIn: parent
            visible: control.checked
            symbol: "checkmark"
            size: Theme.iconCheck
            color: control.enabled ? Theme.accentText : Theme.t3
        }

        FocusRing {
            shown: control.ring
            cornerRadius: parent.radius
        }
    }

    contentItem: Text {
        text: control.text
        font: control.font
        color: control.enabled ? Theme.t1 : Theme.tp
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
