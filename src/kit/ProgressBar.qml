// A progress bar that never goes back until `restart()`.
//   value: real, 0 to 1; shownValue: real, read-only; name: string (its accessible name)
import QtQuick
import Corvane.Kit

Item {
    id: control

    property real value: 0
    property string name
    property real shownValue: 0

    function restart() {
        shownValue = 0;
        raise();
    }

    function raise() {
        shownValue = Math.max(shownValue, Math.min(1, value));
    }

    onValueChanged: raise()
    Component.onCompleted: raise()

    implicitHeight: Theme.progressHeight
    implicitWidth: Theme.fieldWidth
    Accessible.role: Accessible.ProgressBar
    Accessible.name: name
    Accessible.description: Format.percent(shownValue)

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: Theme.controlBackground
    }
    Rectangle {
        width: control.shownValue > 0
               ? Math.max(parent.height, parent.width * control.shownValue) : 0
        height: parent.height
        radius: height / 2
        color: Theme.accent
    }
}
