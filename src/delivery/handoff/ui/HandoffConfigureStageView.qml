// The choices of a handoff, and what goes into its package.
//   handoff: HandoffScreenState
import QtQuick
import Corvane.Kit
import Corvane.Delivery
import Corvane.Handoff

DeliverySheet {
    id: sheet

    required property HandoffScreenState handoff

    objectName: "handoff.configure"
    screen: handoff
    title: qsTr("Selects Handoff")
    sheetHeight: Math.max(Theme.handoffSheetHeight, wholeHeight)
    startText: qsTr("Generate")
    folderButton: folder.chooser

    FolderRow {
        id: folder

        name: "handoff.folder"
        screen: sheet.handoff
        label: qsTr("Destination folder")
        help: sheet.handoff.packageLocation

        RecentFolders {
            handoff: sheet.handoff
        }
    }
    LabelledRow {
        label: qsTr("Project name")
        help: sheet.handoff.projectNameHelp

        TextField {
            objectName: "handoff.projectName"
            width: Theme.packageNameWidth
            name: qsTr("Project name")
            placeholderText: sheet.handoff.projectNamePlaceholder
            text: sheet.handoff.projectName
            onTextEdited: sheet.handoff.projectName = text
        }
    }
    ModeRows {
        name: "handoff"
        screen: sheet.handoff
    }
    HandlesRow {
        name: "handoff.handles"
        screen: sheet.handoff
    }
    NamingSection {
        name: "handoff.naming"
        naming: sheet.handoff.naming
    }

    preview: [
        Column {
            id: contents

            x: Theme.previewPadding
            y: Theme.deliveryTopMargin
            width: parent.width - 2 * x
            spacing: Theme.spacing4

            Label {
                text: qsTr("Contents")
                textStyle: Theme.bodyStrongStyle
                Accessible.role: Accessible.Heading
            }
            Label {
                objectName: "handoff.summary"
                width: parent.width
                text: sheet.handoff.summary
                wrapMode: Text.Wrap
            }
        },
        Divider {
            id: divider

            y: contents.y + contents.height + Theme.resultGap
            width: parent.width
        },
        Label {
            id: included

            x: Theme.previewPadding
            y: divider.y + Theme.resultGap
            text: qsTr("Included clips")
            textStyle: Theme.bodyStrongStyle
            Accessible.role: Accessible.Heading
        },
        PreviewList {
            objectName: "handoff.preview"
            anchors.top: included.bottom
            anchors.topMargin: Theme.spacing6
            anchors.bottom: parent.bottom
            width: parent.width
            name: included.text
            screen: sheet.handoff
        }
    ]
}
