// Stage `results`: the preview and the choices of the import. Only the rows scroll.
import QtQuick
import Corvane.Import
import Corvane.Kit

ImportStage {
    id: stage

    sheetWidth: Theme.importSheetWidth
    sheetHeight: Theme.importSheetHeight
    defaultButton: begin
    initialFocus: begin.enabled ? begin : back
    footer: Row {
        spacing: Theme.buttonGap

        Button {
            id: back

            objectName: "import.backToSources"
            large: true
            text: qsTr("Back")
            onClicked: stage.sheet.back()
        }
        Button {
            id: begin

            objectName: "import.begin"
            large: true
            kind: Button.Primary
            enabled: stage.sheet.canBeginImport
            text: qsTr("Begin Import")
            onClicked: stage.sheet.beginImport()
        }
    }

    Column {
        id: summary

        x: Theme.sheetPadding
        y: Theme.spacing16
        width: parent.width - 2 * x
        spacing: Theme.importSummaryGap

        Item {
            objectName: "import.found"
            width: parent.width
            height: found.implicitHeight
            Accessible.role: Accessible.StaticText
            Accessible.name: found.text + note.text

            Label {
                id: found

                text: stage.sheet.preview.found
                textStyle: Theme.bodyLabelStyle
                Accessible.ignored: true
            }
            Label {
                id: note

                anchors.left: found.right
                text: stage.sheet.preview.alreadyImported
                muted: true
                Accessible.ignored: true
            }
        }

        Item {
            width: parent.width
            height: modes.height

            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Mode")
                textStyle: Theme.bodyLabelStyle
            }
            SegmentedChoice {
                id: modes

                objectName: "import.mode"
                x: Theme.importModeLabelWidth + Theme.spacing16
                name: qsTr("Mode")
                model: stage.sheet.modes
                currentIndex: stage.sheet.mode
                onActivated: index => stage.sheet.setMode(index)
            }
            Item {
                objectName: "import.destination"
                anchors.left: modes.right
                anchors.leftMargin: Theme.spacing16
                anchors.right: parent.right
                height: parent.height
                visible: stage.sheet.preview.destination !== ""
                HelpText.text: stage.sheet.preview.destinationPath
                Accessible.role: Accessible.StaticText
                Accessible.name: destination.text + " " + destinationNote.text

                Icon {
                    id: folder

                    anchors.verticalCenter: parent.verticalCenter
                    symbol: "folder"
                    size: Theme.buttonIconSize
                }
                Label {
                    id: destination

                    anchors.left: folder.right
                    anchors.leftMargin: Theme.spacing6
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, parent.width - folder.width - 2 * Theme.spacing6
                                                   - destinationNote.implicitWidth)
                    text: stage.sheet.preview.destination
                    Accessible.ignored: true
                }
                Label {
                    id: destinationNote

                    anchors.left: destination.right
                    anchors.leftMargin: Theme.spacing6
                    anchors.verticalCenter: parent.verticalCenter
                    text: stage.sheet.preview.destinationNote
                    muted: true
                    Accessible.ignored: true
                }
            }
        }

        Label {
            objectName: "import.leftOut"
            width: parent.width
            visible: text !== ""
            text: stage.sheet.preview.leftOut
            textStyle: Theme.listStyle
            muted: true
            literal: true
            wrapMode: Text.Wrap
        }
        Label {
            objectName: "import.refused"
            width: parent.width
            visible: text !== ""
            text: stage.sheet.preview.refused
            textStyle: Theme.listStyle
            color: Theme.warning
            literal: true
            wrapMode: Text.Wrap
        }
    }

    Rectangle {
        anchors.top: summary.bottom
        anchors.topMargin: Theme.spacing12
        anchors.bottom: parent.bottom
        width: parent.width
        color: Theme.windowBackground

        Divider {
            id: line

            width: parent.width
        }
        Item {
            id: header

            anchors.top: line.bottom
            x: Theme.sheetPadding
            width: parent.width - 2 * x
            height: Theme.importRowHeight

            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("Preview")
                textStyle: Theme.listHeadingStyle
                Accessible.role: Accessible.Heading
            }
            TabularLabel {
                objectName: "import.included"
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                text: stage.sheet.preview.included
                textStyle: Theme.listStyle
                muted: true
            }
        }
        ImportRows {
            anchors.top: header.bottom
            anchors.bottom: parent.bottom
            width: parent.width
            sheet: stage.sheet
        }
    }
}
