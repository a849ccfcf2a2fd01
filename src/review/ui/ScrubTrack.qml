// What is under the pointer for as long as it is pressed: a track to go along. Tells every place once,
// the first at the press.
//   value, maximumValue: real, in seconds; name: string; valueText: string; radius: the ring's;
//   pressed, hovered: bool, read-only; signal scrubbed(real x), beyond the ends too; signal
//   stepped(int frames)
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

        property real told: 0

        function tell(x: real) {
            told = x;
            track.scrubbed(x);
        }

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onPressed: mouse => tell(mouse.x)
        onPositionChanged: mouse => {
            if (pressed && mouse.x !== told) {
                tell(mouse.x);
            }
        }
    }
}
