// A row of choices: a label, a column of controls, and a line of help.
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

        width: Theme.labelColumnWidth
        height: Theme.controlHeight
        verticalAlignment: Text.AlignVCenter
        text: row.label
        textStyle: Theme.bodyLabelStyle
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
