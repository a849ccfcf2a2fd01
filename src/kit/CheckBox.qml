// A check box with a label, for choices that a button applies.
//   text: string; checked: bool; helpText: string; signal toggled()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.CheckBox {
    id: control

    property string helpText
    property bool showsFocusRing: visualFocus
    property color labelColor: enabled ? Theme.primaryText : Theme.placeholderText

    implicitHeight: Theme.checkBoxRowHeight
    implicitWidth: leftPadding + implicitContentWidth
    leftPadding: Theme.checkBoxSize + (text === "" ? 0 : Theme.spacing8)
    focusPolicy: Qt.StrongFocus
    font: Theme.bodyStyle.font

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
        width: Theme.checkBoxSize
        height: Theme.checkBoxSize
        radius: Theme.menuRowRadius
        color: !control.enabled ? Theme.transparent
             : control.checked ? Theme.accent : Theme.fieldBackground
        border.width: Theme.hairline
        border.color: !control.enabled ? Theme.disabledText : control.checked ? Theme.accent
                    : control.hovered ? Theme.secondaryText : Theme.controlBorder

        Icon {
            anchors.centerIn: parent
            visible: control.checked
            symbol: "checkmark"
            size: Theme.checkIconSize
            color: control.enabled ? Theme.accentText : Theme.disabledText
        }

        FocusRing {
            visible: control.showsFocusRing
        }
    }

    contentItem: ControlText {
        text: control.text
        font: control.font
        color: control.labelColor
        elide: Text.ElideRight
    }
}
