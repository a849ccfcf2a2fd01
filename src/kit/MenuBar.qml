// The menu bar of a window. Its titles come first in the Tab order; Return, Enter and Down open a
// menu. Alt with the underlined letter of a title opens its menu, F10 the first one.
//   children: PopUpMenu with a title
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.MenuBar {
    id: control

    function openByKey(item: T.MenuBarItem) {
        Buttons.click(item);
        item.menu.currentIndex = 0;
    }

    function toggleFirst() {
        for (let i = 0; i < count; ++i) {
            if (menuAt(i).visible) {
                menuAt(i).dismiss();
                return;
            }
        }
        openByKey(itemAt(0));
    }

    implicitHeight: Theme.menuBarHeight
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: Theme.spacing4
    rightPadding: Theme.spacing4
    Accessible.role: Accessible.MenuBar
    Accessible.name: qsTr("Menus")

    delegate: T.MenuBarItem {
        id: item

        readonly property int mnemonic: (menu as PopUpMenu)?.mnemonic ?? -1

        implicitHeight: Theme.menuBarHeight
        implicitWidth: implicitContentWidth + leftPadding + rightPadding
        leftPadding: Theme.spacing8
        rightPadding: Theme.spacing8
        focusPolicy: Qt.TabFocus
        font: Theme.listStyle.font
        Keys.onDownPressed: event => Buttons.press(item, event)
        Keys.onReturnPressed: event => Buttons.press(item, event)
        Keys.onEnterPressed: event => Buttons.press(item, event)
        Accessible.role: Accessible.MenuItem
        Accessible.name: text

        Shortcut {
            enabled: item.mnemonic >= 0
            sequence: enabled ? "Alt+" + item.text[item.mnemonic] : ""
            autoRepeat: false
            onActivated: control.openByKey(item)
        }

        contentItem: ControlText {
            text: Format.underlined(item.text, item.mnemonic)
            textFormat: Text.StyledText
            font: item.font
            color: item.highlighted ? Theme.primaryText : Theme.secondaryText
        }
        background: Item {
            Rectangle {
                anchors.fill: parent
                anchors.topMargin: Theme.spacing2
                anchors.bottomMargin: Theme.spacing2
                radius: Theme.menuRowRadius
                color: item.highlighted || item.down ? Theme.controlBackground : Theme.transparent
                border.width: item.visualFocus ? Theme.focusRingWidth : 0
                border.color: Theme.focusRing
            }
        }
    }

    contentItem: Row {
        Shortcut {
            sequence: "F10"
            autoRepeat: false
            onActivated: control.toggleFirst()
        }

        Repeater {
            model: control.contentModel
        }
    }
}
