// The ground of a list's row.
//   selected: bool; current: bool (the bar at its left, with the ground of a selected one);
//   lit: bool (the pointer is over it)
import QtQuick

Rectangle {
    id: ground

    property bool selected: false
    property bool current: false
    property bool lit: false

    color: selected || current ? Theme.sel : lit ? Theme.hover : Theme.none

    Rectangle {
        visible: ground.current
        width: Theme.rowBarWidth
        height: parent.height
        color: Theme.accent
    }
}
