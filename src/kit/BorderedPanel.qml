// A panel with a border, such as the background of a menu.
import QtQuick

Rectangle {
    color: Theme.popupBackground
    radius: Theme.panelRadius
    border.width: Theme.hairline
    border.color: Theme.panelBorder
}
