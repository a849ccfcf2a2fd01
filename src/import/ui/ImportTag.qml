// A badge of a preview row.
//   text: string; outlined: bool
import QtQuick
import Corvane.Kit

Rectangle {
    id: tag

    property string text
    property bool outlined: false

    implicitWidth: label.implicitWidth + 2 * Theme.spacing6
    implicitHeight: Theme.importTagHeight
    radius: Theme.importTagRadius
    color: outlined ? Theme.transparent : Theme.controlBackground
    border.width: outlined ? Theme.hairline : 0
    border.color: Theme.fieldBorder

    Label {
        id: label

        anchors.centerIn: parent
        text: tag.text
        textStyle: Theme.smallStyle
        muted: !tag.outlined
        Accessible.ignored: true
    }
}
