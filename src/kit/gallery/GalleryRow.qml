// A kind of control and its states side by side.
//   title: string; default content: the states; high: bool (40 px at least)
import QtQuick
import Corvane.Kit

Item {
    property alias title: label.text
    property int gap: Theme.s8 + Theme.s2
    default property alias content: states.data

    width: parent.width
    implicitHeight: Math.max(Theme.transportHeight, states.implicitHeight)

    Label {
        id: label

        anchors.verticalCenter: parent.verticalCenter
        type: Theme.small
        muted: true
    }
    Row {
        id: states

        x: 92 + parent.gap
        height: parent.height
        spacing: parent.gap
    }
}
