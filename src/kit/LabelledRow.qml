// A row of a form: a label, a column of controls, and a line of help.
//   label: string; required: bool (adds an accented star); help: string; default content: controls
import QtQuick

Item {
    id: row

    property string label
    property bool required: false
    property string help
    default property alias controls: column.data

    width: parent ? parent.width : 0
    implicitHeight: Math.max(caption.height, inner.height)

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
        id: inner

        x: Theme.labelColumnWidth + Theme.spacing16
        width: parent.width - x
        spacing: Theme.spacing6

        Column {
            id: column

            width: parent.width
        }
        Label {
            visible: text !== ""
            width: Math.min(Theme.deliveryHelpWidth, parent.width)
            text: row.help
            textStyle: Theme.listStyle
            muted: true
            wrapMode: Text.Wrap
        }
    }
}
