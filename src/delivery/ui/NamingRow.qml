// A labelled control of the naming section.
//   label: string; default content: the control
import QtQuick
import Corvane.Kit

Item {
    id: row

    property string label
    default property alias control: holder.data

    width: parent ? parent.width : 0
    height: Theme.footerButtonHeight

    Label {
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.namingLabelWidth
        text: row.label
    }
    Item {
        id: holder

        x: Theme.namingLabelWidth + Theme.spacing12
        width: parent.width - x
        height: childrenRect.height
        anchors.verticalCenter: parent.verticalCenter
    }
}
