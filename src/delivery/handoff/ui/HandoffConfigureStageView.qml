// The choices of a handoff and the preview of its package.
//   handoff: HandoffSheet
import QtQuick
import Corvane.Kit
import Corvane.Delivery
import Corvane.Handoff

DeliveryConfigureSheet {
    id: control

    required property HandoffSheet handoff

    objectName: "handoff.configure"
    sheet: handoff
    title: qsTr("Selects Handoff")
    sheetHeight: Math.max(Theme.handoffSheetHeight, wholeHeight)
    startText: qsTr("Generate")
    folderButton: folder.chooser

    FolderRow {
        id: folder

        name: "handoff.folder"
        sheet: control.handoff
        label: qsTr("Destination folder")
        help: control.handoff.packageLocation

        RecentFolders {
            handoff: control.handoff
        }
    }
    LabelledRow {
        label: qsTr("Project name")
        help: control.handoff.projectNameHelp

        TextField {
            objectName: "handoff.projectName"
            width: Theme.packageNameWidth
            name: qsTr("Project name")
            placeholderText: control.handoff.projectNamePlaceholder
            text: control.handoff.projectName
            onTextEdited: control.handoff.projectName = text
        }
    }
    ModeRows {
        name: "handoff"
        sheet: control.handoff
    }
    HandlesRow {
        name: "handoff.handles"
        sheet: control.handoff
    }
    NamingSection {
        name: "handoff.naming"
        naming: control.handoff.naming
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
                text: control.handoff.summary
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
            sheet: control.handoff
        }
    ]
}
