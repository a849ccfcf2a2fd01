// One state of a control, as wide as its column.
import QtQuick

Item {
    implicitWidth: 66
    height: parent.height
    default property alias content: cell.data

    Item {
        id: cell

        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        height: childrenRect.height
    }
}
