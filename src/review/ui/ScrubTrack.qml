// A track for scrubbing with the pointer.
//   value, maximumValue: real, in seconds; name, valueText: string; pressed, hovered: bool, read-only;
//   signal scrubbed(real x): pressed or dragged to x, which may be outside; signal stepped(int frames)
import QtQuick
import Corvane.Kit

FocusItem {
    id: track

    property real value: 0
    property real maximumValue: 0
    readonly property real minimumValue: 0
    property string name
    property string valueText
    readonly property alias pressed: area.pressed
    readonly property alias hovered: area.containsMouse

    signal scrubbed(real x)
    signal stepped(int frames)

    Accessible.role: Accessible.Slider
    Accessible.focusable: true
    Accessible.name: name
    Accessible.description: valueText
    Accessible.onIncreaseAction: track.stepped(1)
    Accessible.onDecreaseAction: track.stepped(-1)

    FocusRing {
        visible: track.visualFocus
    }

    MouseArea {
        id: area

        property real lastX: 0

        function scrub(x: real) {
            lastX = x;
            track.scrubbed(x);
        }

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onPressed: mouse => scrub(mouse.x)
        onPositionChanged: mouse => {
            if (pressed && mouse.x !== lastX) {
                scrub(mouse.x);
            }
        }
    }
}
