// The manifest or the package of a finished run, with a button that reveals it.
//   text: string, hidden if empty; symbol: string, may be empty; revealText: string;
//   name: string, of the button; signal revealed()
import QtQuick
import Corvane.Kit

Item {
    id: line

    property string text
    property string symbol
    property string revealText: qsTr("Reveal")
    property alias name: reveal.objectName

    signal revealed()

    width: parent ? parent.width : 0
    height: reveal.height
    visible: text !== ""

    Icon {
        id: glyph

        visible: line.symbol !== ""
        anchors.verticalCenter: parent.verticalCenter
        symbol: line.symbol
        size: Theme.buttonIconSize
    }
    Label {
        id: label

        x: glyph.visible ? glyph.width + Theme.spacing8 : 0
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, parent.width - x - reveal.width - Theme.buttonGap)
        text: line.text
        muted: true
        literal: true
        HelpText.text: truncated ? text : ""
    }
    Button {
        id: reveal

        anchors.left: label.right
        anchors.leftMargin: Theme.buttonGap
        anchors.verticalCenter: parent.verticalCenter
        leftPadding: Theme.spacing8
        rightPadding: Theme.spacing8
        small: true
        text: line.revealText
        onClicked: line.revealed()
    }
}
