// A row of a delivery's choices: its label in the label column, its controls beside that, one below
// the other, and a line of help.
//   label: string; help: string; default content: controls
import QtQuick
import Corvane.Kit

Item {
    id: row

    property string label
    property string help
    default property alias controls: column.data

    width: parent ? parent.width : 0
    implicitHeight: Math.max(caption.height, inner.height)

    Label {
        id: caption

        width: Theme.labelColumn
        height: Theme.controlHeight
        verticalAlignment: Text.AlignVCenter
        text: row.label
        type: Theme.bodyLabel
    }

    Column {
        id: inner

        x: Theme.labelColumn + Theme.s16
        width: parent.width - x
        spacing: Theme.s6

        Column {
            id: column

            width: parent.width
        }
        Label {
            visible: text !== ""
            width: Math.min(Theme.deliveryHelpWidth, parent.width)
            text: row.help
            type: Theme.list
            muted: true
            wrapMode: Text.Wrap
        }
    }
}
