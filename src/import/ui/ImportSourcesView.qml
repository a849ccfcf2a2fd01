// Stage `sources`: the folders and files to scan. Dropped ones are added.
import QtQuick
import Corvane.Import
import Corvane.Kit

ImportStage {
    id: stage

    defaultButton: scan
    initialFocus: scan.enabled ? scan : chooseFolder
    footer: Row {
        spacing: Theme.buttonGap

        Button {
            objectName: "import.cancel"
            large: true
            text: qsTr("Cancel")
            onClicked: stage.sheet.dismiss()
        }
        Button {
            id: scan

            objectName: "import.scan"
            large: true
            kind: Button.Primary
            enabled: stage.sheet.canScan
            text: qsTr("Scan")
            onClicked: stage.sheet.scan()
        }
    }

    Label {
        id: heading

        x: Theme.sheetPadding
        anchors.verticalCenter: chooseFiles.verticalCenter
        text: qsTr("Sources")
        textStyle: Theme.bodyStrongStyle
        Accessible.role: Accessible.Heading
    }
    Button {
        id: chooseFolder

        objectName: "import.chooseFolder"
        anchors.right: chooseFiles.left
        anchors.rightMargin: Theme.buttonGap
        y: Theme.spacing16
        text: qsTr("Choose Folder…")
        onClicked: stage.sheet.sources.chooseFolder()
    }
    Button {
        id: chooseFiles

        objectName: "import.chooseFiles"
        anchors.right: parent.right
        anchors.rightMargin: Theme.sheetPadding
        y: Theme.spacing16
        text: qsTr("Choose Files…")
        onClicked: stage.sheet.sources.chooseFiles()
    }

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: chooseFiles.bottom
        anchors.bottom: notes.top
        anchors.margins: Theme.sheetPadding
        anchors.topMargin: Theme.spacing12
        anchors.bottomMargin: Theme.spacing8
        radius: Theme.panelRadius
        color: Theme.windowBackground
        border.width: Theme.hairline
        border.color: drop.containsDrag ? Theme.accent : Theme.panelBorder

        Label {
            objectName: "import.noSources"
            anchors.centerIn: parent
            width: parent.width - 2 * Theme.spacing16
            visible: stage.sheet.sources.count === 0
            text: qsTr("No sources yet. Use Choose Folder or Choose Files to add some.")
            muted: true
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
        }
        ImportSourceRows {
            id: list

            anchors.fill: parent
            anchors.margins: Theme.spacing4
            sources: stage.sheet.sources
            onEmptied: chooseFolder.forceActiveFocus(Qt.OtherFocusReason)
        }
    }

    Column {
        id: notes

        x: Theme.sheetPadding
        width: parent.width - 2 * x
        anchors.bottom: parent.bottom
        anchors.bottomMargin: Theme.spacing12
        spacing: Theme.spacing6

        CheckBox {
            objectName: "import.recursive"
            text: qsTr("Scan subfolders recursively")
            checked: stage.sheet.recursive
            onToggled: stage.sheet.recursive = checked
        }
        Label {
            objectName: "import.sourcesNotice"
            width: parent.width
            visible: text !== ""
            text: stage.sheet.sources.notice
            textStyle: Theme.listStyle
            muted: true
            literal: true
            wrapMode: Text.Wrap
        }
        Label {
            objectName: "import.scanError"
            width: parent.width
            visible: text !== ""
            text: stage.sheet.scanError
            color: Theme.danger
            literal: true
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
        }
    }

    DropArea {
        id: drop

        objectName: "import.drop"
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: event => {
            stage.sheet.sources.addDropped(event.urls);
            event.accept(Qt.CopyAction);
        }
    }
}
