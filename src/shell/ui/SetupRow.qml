// One line of a form: its label in a column of its own, its controls beside it.
//   label: string; required: bool (an accent star); children: the controls, one below the other
import QtQuick
import Corvane.Kit

Item {
    id: row

    default property alias controls: column.data
    property string label
    property bool required: false

    implicitWidth: Theme.setupWidth
    implicitHeight: Math.max(caption.height, column.height)

    Row {
        id: caption

        height: Theme.controlHeight
        spacing: Theme.s4

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: row.label
            type: Theme.bodyLabel
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            visible: row.required
            text: "*"
            color: Theme.accent
            Accessible.name: qsTr("required")
        }
    }

    Column {
        id: column

        x: Theme.labelColumn + Theme.s16
        width: parent.width - x
    }
}
