// Indeterminate progress indicator.
//   running: bool; name: string (its accessible name); size: int
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick

Item {
    id: spinner

    property bool running: true
    property string name
    property int size: Theme.iconSize

    implicitWidth: size
    implicitHeight: size
    visible: running
    Accessible.role: Accessible.Indicator
    Accessible.name: name

    Item {
        anchors.fill: parent

        RotationAnimation on rotation {
            running: spinner.running && spinner.visible
            loops: Animation.Infinite
            from: 0
            to: 360
            duration: Theme.spinnerTurnDuration
        }

        Repeater {
            model: 8

            Rectangle {
                required property int index
                readonly property real angle: index * Math.PI / 4

                x: spinner.size / 2 * (1 + Math.sin(angle) * 0.75) - width / 2
                y: spinner.size / 2 * (1 - Math.cos(angle) * 0.75) - height / 2
                width: spinner.size / 8
                height: width
                radius: width / 2
                color: Theme.secondaryText
                opacity: (index + 1) / 8
            }
        }
    }
}
