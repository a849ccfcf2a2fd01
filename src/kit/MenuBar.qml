// The menu bar of a window. Its titles come first in the Tab order; Return, Enter and Down open a
// menu.
//   children: PopUpMenu with a title
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.MenuBar {
    id: control

    implicitHeight: Theme.menuBarHeight
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: Theme.spacing4
    rightPadding: Theme.spacing4
    Accessible.role: Accessible.MenuBar
    Accessible.name: qsTr("Menus")

    delegate: T.MenuBarItem {
        id: item

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

        contentItem: ControlText {
            text: item.text
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
        Repeater {
            model: control.contentModel
        }
    }
}
