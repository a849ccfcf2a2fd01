// The done stage of a delivery. The header and the counts are fixed, the list scrolls. Return and Esc
// press "Done".
//   sheet: DeliverySheet; againText: string; resultSymbol, revealText: string, of the
//   line with the manifest or the package
// Items are "<objectName>.headline", ".resultLine", ".results", ".revealFolder", ".again" and ".done".
import QtQuick
import Corvane.Kit
import Corvane.Delivery

Sheet {
    id: control

    required property DeliverySheet sheet
    property string againText
    property alias resultSymbol: resultLine.symbol
    property alias revealText: resultLine.revealText

    name: sheet.result.headline
    sheetWidth: Theme.resultSheetWidth
    sheetHeight: Theme.resultSheetHeight
    maximumMargin: Theme.resultSheetMargin
    visible: sheet.isOpen && sheet.stage === "done"
    defaultButton: done
    onEscapePressed: sheet.dismiss()

    footer: [
        Button {
            id: revealFolder

            objectName: control.objectName + ".revealFolder"
            large: true
            text: qsTr("Reveal Folder")
            onClicked: control.sheet.reveal(control.sheet.result.folder)
        },
        Item { // keeps the first button at the left edge
            width: control.availableWidth - 2 * Theme.sheetPadding - 3 * Theme.buttonGap
                   - revealFolder.width - again.width - done.width
            height: Theme.hairline
        },
        Button {
            id: again

            objectName: control.objectName + ".again"
            large: true
            text: control.againText
            onClicked: control.sheet.again()
        },
        Button {
            id: done

            objectName: control.objectName + ".done"
            kind: Button.Primary
            large: true
            text: qsTr("Done")
            onClicked: control.sheet.dismiss()
        }
    ]

    Column {
        id: header

        x: Theme.sheetPadding
        y: Theme.resultTopMargin
        width: control.availableWidth - 2 * x
        spacing: Theme.spacing8

        Label {
            objectName: control.objectName + ".headline"
            width: parent.width
            text: control.sheet.result.headline
            textStyle: Theme.titleStyle
            Accessible.role: Accessible.Heading
        }
        ResultLine {
            id: resultLine

            objectName: control.objectName + ".resultLine"
            name: control.objectName + ".reveal"
            text: control.sheet.result.line
            onRevealed: control.sheet.reveal(control.sheet.result.path)
        }
        NoticeLine {
            objectName: control.objectName + ".error"
            text: control.sheet.result.errorLine
        }
        NoticeLine {
            objectName: control.objectName + ".backup"
            text: control.sheet.result.backupLine
        }
        Row {
            id: counts

            readonly property real boxWidth: (width - 2 * spacing) / 3

            topPadding: Theme.spacing6
            width: parent.width
            spacing: Theme.buttonGap

            CountBox {
                objectName: control.objectName + ".succeeded"
                width: counts.boxWidth
                label: qsTr("Succeeded")
                count: control.sheet.result.succeeded
                countColor: Theme.success
            }
            CountBox {
                objectName: control.objectName + ".failed"
                width: counts.boxWidth
                label: qsTr("Failed")
                count: control.sheet.result.failed
                countColor: Theme.warning
            }
            CountBox {
                objectName: control.objectName + ".cancelled"
                width: counts.boxWidth
                label: qsTr("Cancelled")
                count: control.sheet.result.cancelled
            }
        }
    }

    Divider {
        id: divider

        y: header.y + header.height + Theme.resultGap
        width: control.availableWidth
    }
    ResultList {
        objectName: control.objectName + ".results"
        sheet: control.sheet
        y: divider.y + divider.height
        width: control.availableWidth
        height: control.body.height - y
    }
}
