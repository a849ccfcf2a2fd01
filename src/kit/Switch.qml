// A switch with a label, for settings that apply immediately.
//   text: string; checked: bool; helpText: string; signal toggled()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Switch {
    id: control

    property string helpText
    property bool showsFocusRing: visualFocus

    implicitHeight: Theme.checkBoxRowHeight
    implicitWidth: leftPadding + implicitContentWidth
    leftPadding: Theme.switchWidth + (text === "" ? 0 : Theme.spacing8)
    focusPolicy: Qt.StrongFocus
    font: Theme.listStyle.font

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
        color: !control.enabled ? Theme.controlDisabled
             : control.checked ? Theme.accent : Theme.track

        Rectangle {
            x: control.checked ? parent.width - width - parent.inset : parent.inset
            y: parent.inset
            width: Theme.switchKnob
            height: Theme.switchKnob
            radius: height / 2
            color: !control.enabled ? Theme.disabledText
                 : control.checked ? Theme.accentText : Theme.secondaryText
        }

        FocusRing {
            visible: control.showsFocusRing
            cornerRadius: parent.radius
        }
    }

    contentItem: Text {
        text: control.text
        font: control.font
        color: control.enabled ? Theme.secondaryText : Theme.disabledText
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
