// A row of a menu.
//   text: string; literal: bool, as for Label; checkable, checked: bool (the check mark); shortcutText:
//   string, right-aligned; helpText: string, shown while disabled too; mnemonic:
//   int, index in the text of the underlined letter that chooses the row, or -1; signal triggered()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.MenuItem {
    id: control

    property string helpText
    property bool literal: false
    property string shortcutText
    property int mnemonic: subMenu?.mnemonic ?? -1 // qmllint disable type

    implicitHeight: Theme.menuItemHeight
    implicitWidth: leftPadding + implicitContentWidth + rightPadding
    leftPadding: Theme.spacing6 + Theme.checkIconSize + Theme.spacing6
    rightPadding: Theme.spacing8
    font: literal ? Theme.listStyle.literalFont : Theme.listStyle.font

    HelpText.text: helpText
    Accessible.role: Accessible.MenuItem
    Accessible.name: text
    Accessible.description: helpText
    Accessible.checkable: checkable
    Accessible.checked: checked

    indicator: Icon {
        x: Theme.spacing6
        anchors.verticalCenter: parent.verticalCenter
        visible: control.checked
        symbol: "checkmark"
        size: Theme.checkIconSize
        color: control.enabled ? Theme.secondaryText : Theme.disabledText
    }

    arrow: Icon {
        anchors.right: parent.right
        anchors.rightMargin: Theme.spacing4
        anchors.verticalCenter: parent.verticalCenter
        visible: control.subMenu !== null
        symbol: "chevron.right"
        size: Theme.buttonIconSize
        color: control.enabled ? Theme.secondaryText : Theme.disabledText
    }

    contentItem: Item {
        implicitWidth: label.implicitWidth
                     + (shortcut.text !== "" ? shortcut.implicitWidth + Theme.spacing24 : 0)
                     + (control.subMenu ? Theme.spacing24 : 0)
        implicitHeight: label.implicitHeight

        ControlText {
            id: label

            anchors.left: parent.left
            anchors.right: shortcut.left
            anchors.verticalCenter: parent.verticalCenter
            text: control.mnemonic < 0 ? control.text : Format.underlined(control.text, control.mnemonic)
            textFormat: control.mnemonic < 0 ? Text.PlainText : Text.StyledText
            font: control.font
            color: control.enabled ? Theme.primaryText : Theme.disabledText
            elide: control.literal ? Text.ElideMiddle : Text.ElideRight
            maximumLineCount: 1
        }

        ControlText {
            id: shortcut

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: control.shortcutText
            font: control.font
            color: control.enabled ? Theme.secondaryText : Theme.disabledText
        }
    }

    background: Rectangle {
        radius: Theme.menuRowRadius
        color: control.highlighted && control.enabled ? Theme.controlHovered : Theme.transparent
    }
}
