// A titled part of the gallery.
//   title: string; default content: rows, one below the other
import QtQuick
import Corvane.Kit

Column {
    property alias title: label.text

    bottomPadding: Theme.spacing16 + Theme.spacing4

    Label {
        id: label

        textStyle: Theme.listHeadingStyle
    }
    Item {
        width: parent.width
        height: 2 * Theme.spacing6 + Theme.hairline

        Divider {
            y: Theme.spacing6
            width: parent.width
        }
    }
}
