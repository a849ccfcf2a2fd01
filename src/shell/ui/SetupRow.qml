// A row of a form: a label and the controls beside it.
//   label: string; required: bool (adds an accented star); children: the controls, stacked
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
        spacing: Theme.spacing4

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: row.label
            textStyle: Theme.bodyLabelStyle
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

        x: Theme.labelColumnWidth + Theme.spacing16
        width: parent.width - x
    }
}
