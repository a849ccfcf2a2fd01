// The place of one state in a row, as wide as its column.
import QtQuick

Item {
    implicitWidth: 66
    height: parent.height
    default property alias content: place.data

    Item {
        id: place

        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        height: childrenRect.height
    }
}
