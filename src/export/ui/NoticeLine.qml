// A line about a finished run, behind a symbol where it has one: text that wraps, or a place that
// elides in its middle and can be shown in the file browser.
//   text, symbol: string; ink: the symbol's colour; path: string, what its button shows;
//   revealText: string; name: string, of the button; signal revealed(string path)
import QtQuick
import Corvane.Kit

Item {
    id: line

    property string text
    property string symbol
    property color ink: Theme.t2
    property string path
    property string revealText: qsTr("Reveal")
    property alias name: reveal.objectName

    signal revealed(string path)

    width: parent ? parent.width : 0
    height: Math.max(label.height, reveal.visible ? reveal.height : 0)
    visible: text !== ""

    Icon {
        id: glyph

        visible: line.symbol !== ""
        y: reveal.visible ? (parent.height - height) / 2 : (label.type.line - height) / 2
        symbol: line.symbol
        size: Theme.iconButton
        color: line.ink
    }
    Label {
        id: label

        readonly property real room: parent.width - x
                                     - (reveal.visible ? reveal.width + Theme.buttonGap : 0)

        x: glyph.visible ? glyph.width + Theme.s8 : 0
        anchors.verticalCenter: parent.verticalCenter
        width: line.path !== "" ? Math.min(implicitWidth, room) : room
        text: line.text
        muted: line.path !== ""
        wrapMode: line.path !== "" ? Text.NoWrap : Text.Wrap
        elide: line.path !== "" ? Text.ElideMiddle : Text.ElideNone
        HelpText.text: truncated ? text : ""
    }
    Button {
        id: reveal

        anchors.left: label.right
        anchors.leftMargin: Theme.buttonGap
        anchors.verticalCenter: parent.verticalCenter
        visible: line.path !== ""
        small: true
        text: line.revealText
        onClicked: line.revealed(line.path)
    }
}
