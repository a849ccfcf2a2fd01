// The background of a list row.
//   selected: bool; current: bool (shows a bar at the left, on the background of a selected row);
//   showsHover: bool
import QtQuick

Rectangle {
    id: background

    property bool selected: false
    property bool current: false
    property bool showsHover: false

    color: selected || current ? Theme.selectedRow
         : showsHover ? Theme.hoveredRow : Theme.transparent

    Rectangle {
        visible: background.current
        width: Theme.currentRowBarWidth
        height: parent.height
        color: Theme.accent
    }
}
