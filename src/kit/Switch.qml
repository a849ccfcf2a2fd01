// A switch with a label, for what takes effect on the spot.
//   text: string; checked: bool; helpText: string; signal toggled()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Switch {
    id: control

    property string helpText
    property bool ring: visualFocus

    implicitHeight: Theme.checkRowHeight
    implicitWidth: leftPadding + implicitContentWidth
    leftPadding: Theme.switchWidth + (text === "" ? 0 : Theme.s8)
    focusPolicy: Qt.StrongFocus
    font: Theme.list.font

    HelpText.text: helpText
    Accessible.role: Accessible.CheckBox
    Accessible.name: text === "" ? helpText : text
    Accessible.onPressAction: Buttons.click(control)
    Accessible.onToggleAction: Buttons.click(control)
    Accessible.description: text === "" ? "" : helpText
    Accessible.checkable: true
    Accessible.checked: checked

    indicator: Rectangle {
        readonly property int inset: (height - Theme.switchKnob) / 2

        anchors.verticalCenter: parent.verticalCenter
        width: Theme.switchWidth
        height: Theme.switchHeight
        radius: height / 2
        color: !control.enabled ? Theme.b3 : control.checked ? Theme.accent : Theme.b6

        Rectangle {
            x: control.checked ? parent.width - width - parent.inset : parent.inset
            y: parent.inset
            width: Theme.switchKnob
            height: Theme.switchKnob
            radius: height / 2
            color: !control.enabled ? Theme.t3 : control.checked ? Theme.accentText : Theme.t2
        }

        FocusRing {
            shown: control.ring
            cornerRadius: parent.radius
        }
    }

    contentItem: Text {
        text: control.text
        font: control.font
        color: control.enabled ? Theme.t2 : Theme.t3
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
