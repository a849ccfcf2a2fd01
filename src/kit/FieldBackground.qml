// The background and border of a text field.
//   focused, showsHover: bool
import QtQuick

Rectangle {
    property bool focused: false
    property bool showsHover: false

    radius: Theme.controlRadius
    color: enabled ? Theme.fieldBackground : Theme.controlDisabled
    border.width: focused ? Theme.focusRingWidth : Theme.hairline
    border.color: focused ? Theme.focusRing
                : !enabled ? Theme.panelBorder
                : showsHover ? Theme.controlBorder : Theme.fieldBorder
}
