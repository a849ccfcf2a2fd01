// A labelled control among the naming choices.
//   label: string; default content: the control
import QtQuick
import Corvane.Kit

Item {
    id: row

    property string label
    default property alias control: place.data

    width: parent ? parent.width : 0
    height: Theme.footerButtonHeight

    Label {
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.namingLabelWidth
        text: row.label
    }
    Item {
        id: place

        x: Theme.namingLabelWidth + Theme.spacing12
        width: parent.width - x
        height: childrenRect.height
        anchors.verticalCenter: parent.verticalCenter
    }
}
