// A recent project. A click opens it, the cross removes it from the list.
//   name, filePath, countText: string; focused: bool; removeHelp: string; signals opened(),
//   removed()
import QtQuick
import Corvane.Kit

Item {
    id: row

    required property int index
    required property string name
    required property string filePath
    required property string countText
    property bool focused: false
    property string removeHelp

    signal opened()
    signal removed()

    objectName: "home.recent." + index
    height: Theme.recentRowHeight
    HelpText.text: path.truncated ? filePath : ""
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: filePath + ", " + countText
    Accessible.focusable: true
    Accessible.focused: focused
    Accessible.onPressAction: opened()

    HoverHandler {
        id: pointer
    }

    TapHandler {
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: row.opened()
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.panelRadius
        color: pointer.hovered ? Theme.popupBackground : Theme.transparent

        Item {
            anchors.fill: parent
            anchors.margins: Theme.focusRingGap + Theme.focusRingWidth

            FocusRing {
                visible: row.focused
                cornerRadius: Theme.panelRadius - outset
            }
        }
    }

    Rectangle {
        id: glyph

        x: Theme.recentOverhang
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.recentGlyphSize
        height: Theme.recentGlyphSize
        radius: Theme.controlRadius
        color: pointer.hovered ? Theme.controlBackground : Theme.popupBackground

        Icon {
            anchors.centerIn: parent
            symbol: "film"
            size: Theme.brandIconSize
        }
    }

    Column {
        anchors.left: glyph.right
        anchors.leftMargin: Theme.spacing12
        anchors.right: count.left
        anchors.rightMargin: Theme.spacing12
        anchors.verticalCenter: parent.verticalCenter

        Label {
            width: parent.width
            text: row.name
            textStyle: Theme.bodyLabelStyle
            literal: true
            Accessible.ignored: true
        }

        Label {
            id: path

            width: parent.width
            text: row.filePath
            textStyle: Theme.listStyle
            muted: true
            literal: true
            Accessible.ignored: true
        }
    }

    Label {
        id: count

        anchors.right: cross.left
        anchors.rightMargin: Theme.spacing12
        anchors.verticalCenter: parent.verticalCenter
        text: row.countText
        textStyle: Theme.listStyle
        muted: true
        Accessible.ignored: true
    }

    Button {
        id: cross

        objectName: row.objectName + ".remove"
        width: Theme.spacing32
        anchors.right: parent.right
        anchors.rightMargin: Theme.recentOverhang
        anchors.verticalCenter: parent.verticalCenter
        symbol: "xmark"
        iconSize: Theme.buttonIconSize
        glyphColor: pointer.hovered ? Theme.primaryText : Theme.disabledText
        helpText: row.removeHelp
        focusPolicy: Qt.NoFocus
        onClicked: row.removed()
    }
}
