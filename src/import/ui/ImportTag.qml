// A word about a row of the preview.
//   text: string; outlined: bool
import QtQuick
import Corvane.Kit

Rectangle {
    id: tag

    property string text
    property bool outlined: false

    implicitWidth: label.implicitWidth + 2 * Theme.s6
    implicitHeight: Theme.importTagHeight
    radius: Theme.importTagRadius
    color: outlined ? Theme.none : Theme.b4
    border.width: outlined ? Theme.hairline : 0
    border.color: Theme.edge

    Label {
        id: label

        anchors.centerIn: parent
        text: tag.text
        type: Theme.small
        muted: !tag.outlined
        Accessible.ignored: true
    }
}
