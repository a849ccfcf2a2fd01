// What could not be imported, and why. Up and Down scroll.
//   model: maps with "fileName" and "message"
// Qt 6.4 has no way to say that a delegate knows what surrounds it.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

ListView {
    id: list

    objectName: "import.failures"
    clip: true
    activeFocusOnTab: count > 0
    boundsBehavior: Flickable.StopAtBounds
    keyNavigationEnabled: false
    T.ScrollBar.vertical: ScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Failures")

    function scroll(by: real) {
        contentY = Math.max(originY, Math.min(originY + contentHeight - height, contentY + by));
    }

    Keys.onUpPressed: scroll(-Theme.importRowHeight)
    Keys.onDownPressed: scroll(Theme.importRowHeight)

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
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
            Label {
                width: parent.width
                text: row.modelData.message
                textStyle: Theme.listStyle
                wrapMode: Text.Wrap
                Accessible.ignored: true
            }
        }
    }
}
