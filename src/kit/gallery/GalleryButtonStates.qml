// A row with a button in each state: at rest, hovered, pressed, focused, disabled.
//   title, text, symbol, helpText: string; kind: Button.Kind; destructive: bool
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit

GalleryRow {
    id: row

    property string text
    property string symbol
    property string helpText
    property int kind: text === "" ? Button.Bare : Button.Plain
    property bool destructive: false

    Repeater {
        model: 5

        Item {
            id: cell

            required property int index

            width: 66
            height: row.height

            Button {
                objectName: row.title + "." + cell.index
                anchors.verticalCenter: parent.verticalCenter
                width: row.text === "" ? implicitWidth : parent.width
                text: row.text
                symbol: row.symbol
                helpText: row.helpText
                kind: row.kind
                destructive: row.destructive
                showsHover: cell.index === 1 || (hovered && enabled)
                down: cell.index === 2 || pressed
                showsFocusRing: cell.index === 3 || visualFocus
                enabled: cell.index !== 4
            }
        }
    }
}
