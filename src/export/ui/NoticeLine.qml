// A line about a finished run that wraps, behind a symbol that warns.
//   text: string; nothing shows of an empty one
import QtQuick
import Corvane.Kit

Item {
    id: line

    property string text

    width: parent ? parent.width : 0
    height: label.height
    visible: text !== ""

    Icon {
        y: (label.type.line - height) / 2
        symbol: "exclamationmark.triangle.fill"
        size: Theme.iconButton
        color: Theme.warning
    }
    Label {
        id: label

        x: Theme.iconButton + Theme.s8
        width: parent.width - x
        text: line.text
        wrapMode: Text.Wrap
    }
}
