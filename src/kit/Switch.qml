// A switch with a label, for settings that apply immediately.
//   text: string; checked: bool; helpText: string; signal toggled()
import QtQuick

CheckBox {
    id: control

    leftPadding: Theme.switchWidth + (text === "" ? 0 : Theme.spacing8)
    font: Theme.listStyle.font
    labelColor: enabled ? Theme.secondaryText : Theme.disabledText

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
        }
    }
}
