// A fact about a clip. A long text is elided and shown in full as help text.
//   text: string; maximumWidth: real
import QtQuick
import Corvane.Kit

Rectangle {
    id: fact

    required property string text
    property real maximumWidth: Infinity

    width: Math.min(Math.ceil(label.implicitWidth) + 2 * Theme.factPadding, maximumWidth)
    height: Theme.factHeight
    radius: Theme.factRadius
    color: Theme.controlBackground
    HelpText.text: label.truncated ? text : ""

    Label {
        id: label

        x: Theme.factPadding
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width - 2 * x
        text: fact.text
        textStyle: Theme.smallStyle
    }
}
