// A titled part of the gallery.
//   title: string; default content: rows, one below the other
import QtQuick
import Corvane.Kit

Column {
    property alias title: label.text

    bottomPadding: Theme.s16 + Theme.s4

    Label {
        id: label

        type: Theme.listHead
    }
    Item {
        width: parent.width
        height: 2 * Theme.s6 + Theme.hairline

        Divider {
            y: Theme.s6
            width: parent.width
        }
    }
}
