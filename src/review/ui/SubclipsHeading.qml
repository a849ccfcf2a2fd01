// "Subclips" with their number.
//   count: string
import QtQuick
import Corvane.Kit

Row {
    id: heading

    required property string count

    spacing: Theme.s4

    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Subclips")
        type: Theme.listHead
        Accessible.ignored: true
    }

    Label {
        objectName: "subclips.count"
        anchors.verticalCenter: parent.verticalCenter
        text: heading.count
        type: Theme.list
        muted: true
        Accessible.ignored: true
    }
}
