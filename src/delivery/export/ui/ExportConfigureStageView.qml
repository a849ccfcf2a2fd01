// The choices of an export and the preview of its rows.
//   exporting: ExportSheet
import QtQuick
import Corvane.Kit
import Corvane.Delivery
import Corvane.Export

DeliveryConfigureSheet {
    id: control

    required property ExportSheet exporting

    objectName: "export.configure"
    sheet: exporting
    title: qsTr("Export")
    sheetHeight: Theme.exportSheetHeight
    startText: qsTr("Start Export")
    folderButton: folder.chooser

    FolderRow {
        id: folder

        name: "export.folder"
        sheet: control.exporting
        label: qsTr("Output folder")
    }
    ModeRows {
        name: "export"
        sheet: control.exporting
    }
    LabelledRow {
        label: qsTr("Include")

        CheckBox {
            objectName: "export.wholeClips"
            text: qsTr("Whole-clip selects")
            checked: control.exporting.includeWholeClips
            onToggled: control.exporting.includeWholeClips = checked
        }
        CheckBox {
            objectName: "export.subclips"
            text: qsTr("Subclip selects")
            checked: control.exporting.includeSubclips
            onToggled: control.exporting.includeSubclips = checked
        }
        CheckBox {
            objectName: "export.newOnly"
            text: qsTr("Export new only (skip already-exported)")
            checked: control.exporting.newOnly
            onToggled: control.exporting.newOnly = checked
        }
    }
    HandlesRow {
        name: "export.handles"
        sheet: control.exporting
    }
    NamingSection {
        name: "export.naming"
        naming: control.exporting.naming
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
            text: control.exporting.countLine
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
            sheet: control.exporting
        }
    ]
}
