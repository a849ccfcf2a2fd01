// The "S" button of a row, filled if the item is selected for export.
//   isOn: bool; helpText: string; signal clicked()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Button {
    id: control

    property bool isOn: false
    property string helpText

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    focusPolicy: Qt.TabFocus
    Keys.onReturnPressed: Buttons.click(control)
    Keys.onEnterPressed: Buttons.click(control)

    HelpText.text: helpText
    Accessible.role: Accessible.CheckBox
    Accessible.name: helpText
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onPressAction: Buttons.click(control)
    Accessible.onToggleAction: Buttons.click(control)

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
                cornerRadius: parent.radius
            }
        }
    }
    contentItem: Text {
        text: "S"
        font: Theme.smallBoldStyle.font
        color: control.isOn ? Theme.successText : Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
        Accessible.ignored: true
    }
}
