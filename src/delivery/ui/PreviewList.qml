// The planned rows, or a text that explains why there are none.
//   sheet: DeliverySheet; name: string (its accessible name); rows are "<objectName>.<index>"
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Delivery

Item {
    id: preview

    required property DeliverySheet sheet
    property string name

    Label {
        objectName: preview.objectName + ".nothing"
        visible: !preview.sheet.hasRows
        x: Theme.previewPadding
        width: parent.width - 2 * x
        text: preview.sheet.nothingText
        muted: true
        wrapMode: Text.Wrap
    }

    ReadingList {
        id: list

        objectName: preview.objectName + ".list"
        anchors.fill: parent
        anchors.leftMargin: Theme.spacing8
        anchors.rightMargin: Theme.spacing8
        anchors.bottomMargin: Theme.spacing8
        visible: preview.sheet.hasRows
        name: preview.name
        model: preview.sheet.rows

        delegate: Item {
            id: row

            required property int index
            required property string symbol
            required property string name
            required property string note

            objectName: preview.objectName + "." + index
            width: ListView.view.width
            height: Theme.previewRowHeight
            Accessible.role: Accessible.ListItem
            Accessible.name: note === "" ? name : name + ", " + note

            Icon {
                id: glyph

                x: Theme.spacing12
                anchors.verticalCenter: parent.verticalCenter
                symbol: row.symbol
                size: Theme.buttonIconSize
            }
            Label {
                anchors.left: glyph.right
                anchors.leftMargin: Theme.spacing8
                anchors.right: note.left
                anchors.rightMargin: Theme.spacing12
                anchors.verticalCenter: parent.verticalCenter
                text: row.name
                textStyle: Theme.listStyle
                literal: true
                HelpText.text: truncated ? text : ""
                Accessible.ignored: true
            }
            Label {
                id: note

                anchors.right: parent.right
                anchors.rightMargin: Theme.spacing12
                anchors.verticalCenter: parent.verticalCenter
                text: row.note
                textStyle: Theme.listStyle
                muted: true
                Accessible.ignored: true
            }
        }
    }

    FocusRing {
        anchors.fill: list
        visible: list.activeFocus
    }
}
