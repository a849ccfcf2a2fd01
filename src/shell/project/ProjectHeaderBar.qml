// The top row of an open project.
//   header: ProjectHeader; signal commandWanted(string commandId): id of an AppCommand
import QtQuick
import Corvane.Kit
import Corvane.Shell

Rectangle {
    id: root

    required property ProjectHeader header

    signal commandWanted(string commandId)

    objectName: "header"
    implicitHeight: Theme.headerHeight
    color: Theme.panelBackground
    Accessible.role: Accessible.ToolBar
    Accessible.name: header.projectName

    Button {
        id: brand

        objectName: "header.close"
        focusPolicy: Qt.TabFocus
        anchors.left: parent.left
        anchors.leftMargin: Theme.spacing6
        anchors.verticalCenter: parent.verticalCenter
        kind: Button.Bare
        leftPadding: Theme.spacing6
        rightPadding: Theme.spacing8
        symbol: "play.rectangle.fill"
        iconSize: Theme.brandIconSize
        glyphColor: Theme.accent
        textStyle: Theme.bodyStrongStyle
        text: "Corvane"
        helpText: root.header.closeHelp
        onClicked: root.commandWanted("closeProject")
    }

    Label {
        id: separator

        anchors.left: brand.right
        anchors.leftMargin: Theme.spacing8
        anchors.verticalCenter: parent.verticalCenter
        text: "/"
        color: Theme.disabledText
        Accessible.ignored: true
    }

    Label {
        id: name

        objectName: "header.projectName"
        anchors.left: separator.right
        anchors.leftMargin: Theme.spacing8
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, buttons.x - x - Theme.spacing16 - notice.width
                                       - notice.anchors.leftMargin)
        text: root.header.projectName
        textStyle: Theme.bodyLabelStyle
        literal: true
        HelpText.text: truncated ? text : ""
    }

    Label {
        id: notice

        objectName: "header.notice"
        anchors.left: name.right
        anchors.leftMargin: text === "" ? 0 : Theme.spacing24
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, buttons.x / 3)
        text: root.header.notice
        textStyle: Theme.listStyle
        color: Theme.warning
        HelpText.text: root.header.noticeHelp
    }

    Label {
        objectName: "header.status"
        anchors.left: notice.right
        anchors.leftMargin: Theme.spacing24
        anchors.right: buttons.left
        anchors.rightMargin: Theme.spacing16
        anchors.verticalCenter: parent.verticalCenter
        visible: width > 0
        text: root.header.statusMessage
        textStyle: Theme.listStyle
        literal: true
        elide: Text.ElideRight
        muted: true
        HelpText.text: truncated ? text : ""
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: Theme.regionPadding
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.buttonGap

        Button {
            objectName: "header.import"
            focusPolicy: Qt.TabFocus
            symbol: "tray.and.arrow.down"
            text: qsTr("Import")
            helpText: root.header.importHelp
            onClicked: root.commandWanted("import")
        }

        Button {
            objectName: "header.export"
            focusPolicy: Qt.TabFocus
            symbol: "square.and.arrow.up"
            text: qsTr("Export")
            enabled: root.header.hasSelects
            helpText: root.header.exportHelp
            onClicked: root.commandWanted("export")
        }

        Button {
            objectName: "header.handoff"
            focusPolicy: Qt.TabFocus
            symbol: "shippingbox"
            text: qsTr("Handoff")
            enabled: root.header.hasSelects
            helpText: root.header.handoffHelp
            onClicked: root.commandWanted("selectsHandoff")
        }

        Button {
            objectName: "header.help"
            focusPolicy: Qt.TabFocus
            symbol: "book.fill"
            helpText: root.header.guideHelp
            onClicked: root.commandWanted("help")
        }
    }

    Divider {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
