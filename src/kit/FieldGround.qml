// The hole of a field: its ground and its border.
//   focused, lit: bool
import QtQuick

Rectangle {
    property bool focused: false
    property bool lit: false

    radius: Theme.controlRadius
    color: enabled ? Theme.b1 : Theme.b3
    border.width: focused ? Theme.ringWidth : Theme.hairline
    border.color: focused ? Theme.ring : !enabled ? Theme.line2 : lit ? Theme.edge2 : Theme.edge
}
