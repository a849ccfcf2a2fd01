// A row of a finished run: the delivered file with a button that reveals it, or the error as selectable
// text.
//   heading, symbol, name, note, reason, error, rich, path: string; delivered, cancelled: bool, as in
//   the list's model; first: bool, of the list; active: bool (the keys act on it); signal revealed();
//   copyText() copies the error
import QtQuick
import Corvane.Kit

Item {
    id: row

    required property string heading
    required property string symbol
    required property string name
    required property string note
    required property string reason
    required property string error
    required property string rich
    required property string path
    required property bool delivered
    required property bool cancelled
    property bool first: false
    property bool active: false

    signal revealed()

    function copyText() {
        why.selectAll();
        why.copy();
        why.deselect();
    }

    implicitHeight: line.y + line.height
    Accessible.role: Accessible.ListItem
    Accessible.name: delivered ? (note === "" ? name : name + " " + note) : name + ": " + error
    Accessible.description: reason
    Accessible.onPressAction: row.revealed()

    Divider {
        visible: row.heading !== "" && !row.first
        y: Theme.spacing8
        width: parent.width
    }
    Label {
        id: head

        visible: row.heading !== ""
        x: Theme.sheetPadding
        y: Theme.spacing12 + (row.first ? 0 : Theme.spacing8)
        height: Theme.listStyle.lineHeight + Theme.spacing4
        text: row.heading
        textStyle: Theme.listHeadingStyle
        Accessible.role: Accessible.Heading
    }

    Item {
        id: line

        y: head.visible ? head.y + head.height : 0
        width: parent.width
        height: row.delivered ? Theme.resultRowHeight
                              : Math.max(Theme.resultRowHeight,
                                         why.height + 2 * Theme.resultTextPadding)

        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: Theme.spacing12
            anchors.rightMargin: Theme.spacing12
            radius: Theme.controlRadius
            color: row.active ? Theme.selectedRow : Theme.transparent
        }
        Icon {
            id: glyph

            x: Theme.sheetPadding
            y: (Theme.resultRowHeight - height) / 2
            symbol: row.symbol
            size: Theme.buttonIconSize
            color: row.delivered ? Theme.success : row.cancelled ? Theme.secondaryText : Theme.warning
        }
        Label {
            id: file

            visible: row.delivered
            anchors.left: glyph.right
            anchors.leftMargin: Theme.spacing12
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth,
                            reveal.x - x - (about.visible ? about.width + Theme.spacing6 : 0) - Theme.spacing12)
            text: row.name
            textStyle: Theme.listStyle
            literal: true
            HelpText.text: truncated ? text : ""
            Accessible.ignored: true
        }
        Label {
            id: about

            visible: row.delivered && text !== ""
            anchors.left: file.right
            anchors.leftMargin: Theme.spacing6
            anchors.verticalCenter: parent.verticalCenter
            text: row.note
            textStyle: Theme.listStyle
            muted: true
            HelpText.text: row.reason
            Accessible.ignored: true
        }
        TextEdit {
            id: why

            objectName: row.objectName + ".reason"
            visible: !row.delivered
            anchors.left: glyph.right
            anchors.leftMargin: Theme.spacing12
            anchors.right: parent.right
            anchors.rightMargin: Theme.sheetPadding
            y: Theme.resultTextPadding
            text: row.delivered ? "" : row.rich
            textFormat: TextEdit.RichText
            wrapMode: TextEdit.Wrap
            font: Theme.listStyle.literalFont
            color: Theme.primaryText
            selectionColor: Theme.textSelection
            selectedTextColor: Theme.primaryText
            readOnly: true
            selectByMouse: true
            Accessible.ignored: true
        }
        Button {
            id: reveal

            objectName: row.objectName + ".reveal"
            visible: row.delivered
            anchors.right: parent.right
            anchors.rightMargin: Theme.sheetPadding - Theme.spacing8
            anchors.verticalCenter: parent.verticalCenter
            leftPadding: Theme.spacing8
            rightPadding: Theme.spacing8
            kind: Button.Bare
            small: true
            muted: true
            focusPolicy: Qt.NoFocus
            text: qsTr("Reveal")
            onClicked: row.revealed()
        }
    }
}
