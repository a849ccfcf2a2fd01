// The heading "Subclips" with a count.
//   count: string
import QtQuick
import Corvane.Kit

Row {
    id: heading

    required property string count

    spacing: Theme.spacing4

    Label {
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Subclips")
        textStyle: Theme.listHeadingStyle
        Accessible.ignored: true
    }

    Label {
        objectName: "subclips.count"
        anchors.verticalCenter: parent.verticalCenter
        text: heading.count
        textStyle: Theme.listStyle
        muted: true
        Accessible.ignored: true
    }
}
