// A media confirmation banner.
//   banner: a map of MediaBanners.banners; signals answered(), closed()
import QtQuick
import Corvane.Kit

Rectangle {
    id: row

    required property var banner

    signal answered()
    signal closed()

    visible: banner.isShown
    implicitHeight: Math.max(text.implicitHeight + 2 * text.y, Theme.controlHeight + 2 * Theme.spacing8)
    color: Theme.bannerBackground
    Accessible.role: Accessible.AlertMessage
    Accessible.name: banner.message

    Icon {
        id: glyph

        x: Theme.bannerInset
        y: Theme.spacing8 + (Theme.controlHeight - height) / 2
        symbol: row.banner.icon
        color: Theme.warning
    }

    Column {
        id: text

        anchors.left: glyph.right
        anchors.leftMargin: Theme.spacing12
        y: Theme.spacing8 + (Theme.controlHeight - Theme.bodyStyle.lineHeight) / 2
        width: Math.min(Theme.bannerMessageWidth, actions.x - Theme.spacing24 - x)
        spacing: Theme.spacing2

        Label {
            objectName: row.objectName + ".message"
            width: parent.width
            text: row.banner.message
            wrapMode: Text.Wrap
        }

        Disclosure {
            objectName: row.objectName + ".disclosure"
            focusPolicy: Qt.TabFocus
            visible: row.banner.disclosure !== ""
            width: parent.width
            text: row.banner.disclosure

            ScrollingList {
                id: list

                objectName: row.objectName + ".paths"
                width: text.width
                height: Math.min(count, Theme.bannerListLines) * Theme.listStyle.lineHeight
                interactive: count > Theme.bannerListLines
                model: row.banner.paths
                name: row.banner.disclosure

                delegate: Label {
                    required property string modelData

                    width: ListView.view.width
                    text: modelData
                    textStyle: Theme.listStyle
                    muted: true
                    literal: true
                    HelpText.text: truncated ? text : ""
                    Accessible.role: Accessible.ListItem
                }
            }
        }
    }

    Row {
        id: actions

        anchors.right: parent.right
        anchors.rightMargin: Theme.spacing8
        y: Theme.spacing8
        spacing: Theme.spacing4

        PaneButton {
            objectName: row.objectName + ".answer"
            text: row.banner.button
            enabled: !row.banner.isAnswering || row.banner.canCancel
            onClicked: row.answered()
        }
        PaneButton { // reserves its space if hidden, so that the answer buttons are aligned
            objectName: row.objectName + ".close"
            opacity: row.banner.isClosable ? 1 : 0
            enabled: row.banner.isClosable
            width: Theme.controlHeight
            kind: Button.Bare
            symbol: "xmark"
            helpText: qsTr("Hide for now")
            onClicked: row.closed()
        }
    }

    Divider {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
