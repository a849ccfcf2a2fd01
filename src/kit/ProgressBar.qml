// A progress bar that never goes back until `restart()`.
//   value: real, 0 to 1; shownValue: real, read-only; name: string (its accessible name)
import QtQuick
import Corvane.Kit

Item {
    id: control

    property real value: 0
    property string name
    readonly property alias shownValue: state.highest

    function restart() {
        state.highest = 0;
        state.raise();
    }

    onValueChanged: state.raise()
    Component.onCompleted: state.raise()

    implicitHeight: Theme.progressHeight
    implicitWidth: Theme.fieldWidth
    Accessible.role: Accessible.ProgressBar
    Accessible.name: name
    Accessible.description: Format.percent(shownValue)

    QtObject {
        id: state

        property real highest: 0

        function raise() {
            highest = Math.max(highest, Math.min(1, control.value));
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.controlBackground
    }
    Item {
        anchors.fill: parent

        Rectangle {
            visible: width > 0
            width: control.shownValue > 0
                   ? Math.max(parent.height, parent.width * control.shownValue) : 0
            height: parent.height
            radius: height / 2
            color: Theme.accent
        }
    }
}
