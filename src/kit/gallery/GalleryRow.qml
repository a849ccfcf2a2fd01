// A control and its states side by side.
//   title: string; gap: int, between the states; default content: the states
import QtQuick
import Corvane.Kit

Item {
    id: row

    property alias title: label.text
    property int gap: Theme.spacing8 + Theme.spacing2
    default property alias content: states.data

    width: parent.width
    implicitHeight: Math.max(Theme.transportHeight, states.implicitHeight)

    Label {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        textStyle: Theme.smallStyle
        muted: true
    }
    Row {
        id: states

        x: 92 + row.gap
        height: parent.height
        spacing: row.gap
    }
}
