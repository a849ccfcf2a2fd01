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
        y: (label.textStyle.lineHeight - height) / 2
        symbol: "exclamationmark.triangle.fill"
        size: Theme.buttonIconSize
        color: Theme.warning
    }
    Label {
        id: label

        x: Theme.buttonIconSize + Theme.spacing8
        width: parent.width - x
        text: line.text
        wrapMode: Text.Wrap
    }
}
