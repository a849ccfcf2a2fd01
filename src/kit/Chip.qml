// A chip that toggles or, with `menu`, opens a menu below itself.
//   text: string; checked: bool; helpText: string; menu: PopUpMenu or null; signals toggled()
//   (without a menu), clicked()
// The owner of a chip with a menu sets `checked`.
import QtQuick
import Corvane.Kit

ButtonBase {
    id: control

    property PopUpMenu menu: null
    readonly property color labelColor: !enabled ? Theme.disabledText
                                      : checked ? Theme.activeChipText : Theme.primaryText

    checkable: menu === null
    implicitHeight: Theme.chipHeight
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: Theme.spacing12 - Theme.spacing2
    rightPadding: leftPadding - (menu ? Theme.spacing4 + Theme.hairline : 0)
    spacing: Theme.spacing2
    font: Theme.listNameStyle.font

    onClicked: {
        if (menu) {
            menu.openBelow(control);
        }
    }
    Keys.onDownPressed: event => {
        if (menu) {
            Buttons.click(control);
        }
        event.accepted = menu !== null;
    }

    Accessible.role: menu ? Accessible.ButtonMenu : Accessible.CheckBox
    Accessible.checkable: menu === null
    Accessible.checked: checked

    contentItem: Row {
        spacing: control.spacing

        ControlText {
            anchors.verticalCenter: parent.verticalCenter
            text: control.text
            font: control.font
            color: control.labelColor
        }

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            visible: control.menu !== null
            symbol: "chevron.down"
            size: Theme.buttonIconSize
            color: control.labelColor
        }
    }

    background: Rectangle {
        radius: height / 2
        color: !control.enabled ? Theme.controlDisabled
             : control.checked ? Theme.activeChipBackground
             : control.down ? Theme.controlPressed
             : control.showsHover ? Theme.controlHovered : Theme.controlBackground
        border.width: control.checked && control.enabled ? Theme.hairline : 0
        border.color: Theme.activeChipBorder

        FocusRing {
            visible: control.showsFocusRing
        }
    }
}
