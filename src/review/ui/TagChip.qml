// A tag with a button that removes it. A long tag is elided and shown in full as help text.
//   text: string; maximumWidth: real; signal removed()
import QtQuick
import Corvane.Kit

Rectangle {
    id: chip

    required property string text
    property real maximumWidth: Infinity
    property alias cross: cross

    signal removed()

    width: Math.min(Math.ceil(label.implicitWidth) + Theme.tagPadding + cross.width + Theme.spacing4, maximumWidth)
    height: Theme.tagHeight
    radius: height / 2
    color: Theme.controlBackground
    HelpText.text: label.truncated ? text : ""

    Label {
        id: label

        anchors.left: parent.left
        anchors.leftMargin: Theme.tagPadding
        anchors.right: cross.left
        anchors.verticalCenter: parent.verticalCenter
        text: chip.text
        textStyle: Theme.listStyle
        literal: true
    }

    ButtonBase {
        id: cross

        anchors.right: parent.right
        anchors.rightMargin: Theme.spacing4
        width: Theme.tagCrossWidth
        height: parent.height
        focusPolicy: Qt.TabFocus
        helpText: qsTr("Remove tag %1").arg(chip.text)
        onClicked: chip.removed()
        Accessible.name: helpText
        Accessible.description: ""

        background: Item {
            FocusRing {
                anchors.margins: Theme.hairline
                visible: cross.visualFocus
            }
        }
        contentItem: Icon {
            symbol: "xmark"
            size: Theme.checkIconSize
            color: cross.hovered ? Theme.primaryText : Theme.secondaryText
        }
    }
}
