// The files that could not be imported, with the reasons. Up and Down scroll.
//   model: maps with "fileName" and "message"
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit

ReadingList {
    id: list

    objectName: "import.failures"
    name: qsTr("Failures")
    step: Theme.importRowHeight
    activeFocusOnTab: count > 0

    delegate: Item {
        id: row

        required property int index
        required property var modelData

        objectName: "import.failure." + index
        width: list.width
        height: texts.implicitHeight + Theme.spacing12
        Accessible.role: Accessible.ListItem
        Accessible.name: modelData.fileName + ": " + modelData.message

        Icon {
            id: glyph

            x: Theme.spacing12
            y: Theme.spacing6
            symbol: "exclamationmark.triangle.fill"
            size: Theme.buttonIconSize
            color: Theme.warning
        }
        Column {
            id: texts

            anchors.left: glyph.right
            anchors.leftMargin: Theme.spacing8
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacing12
            y: Theme.spacing6

            Label {
                width: parent.width
                text: row.modelData.fileName
                textStyle: Theme.listHeadingStyle
                literal: true
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            Label {
                width: parent.width
                text: row.modelData.message
                textStyle: Theme.listStyle
                literal: true
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
    }
}
