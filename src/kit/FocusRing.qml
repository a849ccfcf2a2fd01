// The ring around a control that has the keyboard's focus: 2 px, 2 px outside.
//   shown: bool; control: the item that it surrounds (its parent); cornerRadius: the control's radius
import QtQuick

Rectangle {
    property bool shown: false
    property real cornerRadius: Theme.controlRadius
    readonly property int reach: Theme.ringGap + Theme.ringWidth

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -reach
    visible: shown
    radius: cornerRadius + reach
    color: Theme.none
    border.color: Theme.ring
    border.width: Theme.ringWidth
}
