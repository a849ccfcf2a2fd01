// The "S" button of a row, filled if the item is selected for export.
//   isOn: bool; helpText: string; signal clicked()
import QtQuick
import Corvane.Kit

ButtonBase {
    id: control

    property bool isOn: false

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    focusPolicy: Qt.TabFocus

    Accessible.role: Accessible.CheckBox
    Accessible.name: helpText
    Accessible.description: ""
    Accessible.checkable: true
    Accessible.checked: isOn

    background: Item {
        Rectangle {
            anchors.centerIn: parent
            width: Theme.exportMarkSize
            height: Theme.exportMarkSize
            radius: Theme.menuRowRadius
            color: control.isOn ? Theme.success : control.hovered ? Theme.controlBackground : Theme.transparent
            border.width: Theme.hairline
            border.color: control.isOn ? Theme.success : Theme.controlBorder

            FocusRing {
                visible: control.visualFocus
            }
        }
    }
    contentItem: ControlText {
        text: "S"
        font: Theme.smallBoldStyle.font
        color: control.isOn ? Theme.successText : Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
    }
}
