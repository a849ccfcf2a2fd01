// A warning about a finished run.
//   text: string; hidden if empty
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
