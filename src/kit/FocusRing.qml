// The ring around a control with keyboard focus: 2 px wide, 2 px outside the control. The owner
// binds `visible`.
//   cornerRadius: radius of the control, by default that of the Rectangle around the ring
import QtQuick

Rectangle {
    property real cornerRadius: (parent as Rectangle)?.radius || Theme.controlRadius
    readonly property int outset: Theme.focusRingGap + Theme.focusRingWidth

    objectName: "focusRing"
    anchors.fill: parent
    anchors.margins: -outset
    radius: cornerRadius + outset
    color: Theme.transparent
    border.color: Theme.focusRing
    border.width: Theme.focusRingWidth
}
