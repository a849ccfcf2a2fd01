// One banner: what the program can't vouch for, why that matters, and the answer that may be given.
//   banner: a map of MediaBanners.places; name: string (objectName of the row)
//   signals answered(), closed()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

Rectangle {
    id: row

    required property var banner

    signal answered()
    signal closed()

    visible: banner.isShown
    implicitHeight: Math.max(text.implicitHeight + 2 * text.y, Theme.controlHeight + 2 * Theme.s8)
    color: Theme.warnBg
    Accessible.role: Accessible.AlertMessage
    Accessible.name: banner.message

    Icon {
        id: glyph

        x: Theme.bannerInset
        y: Theme.s8 + (Theme.controlHeight - height) / 2
        symbol: row.banner.icon
        color: Theme.warning
    }

    Column {
        id: text

        anchors.left: glyph.right
        anchors.leftMargin: Theme.s12
        y: Theme.s8 + (Theme.controlHeight - Theme.body.line) / 2
        width: Math.min(Theme.bannerMessageWidth, actions.x - Theme.s24 - x)
        spacing: Theme.s2

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

            ListView {
                id: list

                objectName: row.objectName + ".paths"
                width: text.width
                height: Math.min(count, Theme.bannerListLines) * Theme.list.line
                clip: true
                interactive: count > Theme.bannerListLines
                boundsBehavior: Flickable.StopAtBounds
                model: row.banner.paths
                T.ScrollBar.vertical: ScrollBar {}
                Accessible.role: Accessible.List
                Accessible.name: row.banner.disclosure

                delegate: Label {
                    required property string modelData

                    width: ListView.view.width
                    text: modelData
                    type: Theme.list
                    muted: true
                    elide: Text.ElideMiddle
                    HelpText.text: truncated ? text : ""
                    Accessible.role: Accessible.ListItem
                }
            }
        }
    }

    Row {
        id: actions

        anchors.right: parent.right
        anchors.rightMargin: Theme.s8
        y: Theme.s8
        spacing: Theme.s4

        Button {
            objectName: row.objectName + ".answer"
            focusPolicy: Qt.TabFocus
            text: row.banner.button
            enabled: !row.banner.isAnswering
            onClicked: row.answered()
        }
        Button { // its place stays free where there is none, so that the answers stand in one column
            objectName: row.objectName + ".close"
            focusPolicy: Qt.TabFocus
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
