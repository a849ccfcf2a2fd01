// The choices of an export, and what they come to.
//   screen: ExportScreenState
import QtQuick
import Corvane.Kit
import Corvane.Delivery
import Corvane.Export

DeliverySheet {
    id: sheet

    required property ExportScreenState exporting

    objectName: "export.configure"
    screen: exporting
    title: qsTr("Export")
    sheetHeight: Theme.exportSheetHeight
    startText: qsTr("Start Export")
    folderButton: folder.chooser

    FolderRow {
        id: folder

        name: "export.folder"
        screen: sheet.exporting
        label: qsTr("Output folder")
    }
    ModeRows {
        name: "export"
        screen: sheet.exporting
    }
    LabelledRow {
        label: qsTr("Include")

        CheckBox {
            objectName: "export.wholeClips"
            text: qsTr("Whole-clip selects")
            checked: sheet.exporting.includeWholeClips
            onToggled: sheet.exporting.includeWholeClips = checked
        }
        CheckBox {
            objectName: "export.subclips"
            text: qsTr("Subclip selects")
            checked: sheet.exporting.includeSubclips
            onToggled: sheet.exporting.includeSubclips = checked
        }
        CheckBox {
            objectName: "export.newOnly"
            text: qsTr("Export new only (skip already-exported)")
            checked: sheet.exporting.newOnly
            onToggled: sheet.exporting.newOnly = checked
        }
    }
    HandlesRow {
        name: "export.handles"
        screen: sheet.exporting
    }
    NamingSection {
        name: "export.naming"
        naming: sheet.exporting.naming
    }

    preview: [
        Label {
            id: previewTitle

            x: Theme.previewPadding
            y: Theme.deliveryTopMargin
            text: qsTr("Manifest preview")
            textStyle: Theme.bodyStrongStyle
            Accessible.role: Accessible.Heading
        },
        Label {
            objectName: "export.count"
            anchors.right: parent.right
            anchors.rightMargin: Theme.previewPadding
            anchors.baseline: previewTitle.baseline
            text: sheet.exporting.countLine
            textStyle: Theme.listStyle
            muted: true
        },
        PreviewList {
            objectName: "export.preview"
            anchors.top: previewTitle.bottom
            anchors.topMargin: Theme.resultCountPadding
            anchors.bottom: parent.bottom
            width: parent.width
            name: previewTitle.text
            screen: sheet.exporting
        }
    ]
}
