// The configure stage of a delivery: scrollable choices at the left and the preview at the right.
// Return starts the run, Esc and "Back" close the sheet.
//   sheet: DeliverySheet; startText: string; folderButton: Button (has the initial focus if
//   the run cannot be started); default content: rows of choices; preview: items, laid out by the owner in
//   `previewPane`; wholeHeight: real, read-only, the height that needs no scrolling
// Items are "<objectName>.cancel", ".start" and ".choices".
import QtQuick
import Corvane.Kit
import Corvane.Delivery

Sheet {
    id: control

    required property DeliverySheet sheet
    property string startText
    property Button folderButton: null
    default property alias choices: form.data
    property alias preview: previewPane.data
    readonly property alias previewPane: previewPane
    readonly property real wholeHeight: Theme.sheetHeaderHeight + flickable.contentHeight
                                        + Theme.sheetFooterHeight + topPadding + bottomPadding

    backText: qsTr("Back")
    sheetWidth: Theme.deliverySheetWidth
    visible: sheet.isOpen && sheet.stage === "configure"
    defaultButton: start
    initialFocus: sheet.canStart ? start : folderButton
    onEscapePressed: sheet.dismiss()
    onBackClicked: sheet.dismiss()
    onAboutToShow: flickable.contentY = 0

    footer: [
        Button {
            objectName: control.objectName + ".cancel"
            large: true
            text: qsTr("Cancel")
            onClicked: control.sheet.dismiss()
        },
        Button {
            id: start

            objectName: control.objectName + ".start"
            kind: Button.Primary
            large: true
            enabled: control.sheet.canStart
            text: control.startText
            helpText: control.sheet.startHelp
            onClicked: control.sheet.start()
        }
    ]

    content: [
        FocusFlickable {
            id: flickable

            objectName: control.objectName + ".choices"
            width: Math.min(Theme.deliveryFormWidth, control.availableWidth)
            height: control.body.height
            contentHeight: form.height + 2 * Theme.deliveryTopMargin
            focusMargin: Theme.formGap

            Column {
                id: form

                x: Theme.sheetPadding
                y: Theme.deliveryTopMargin
                width: parent.width - 2 * x
                spacing: Theme.formGap
            }
        },
        Rectangle {
            anchors.left: flickable.right
            anchors.right: parent.right
            height: control.body.height
            color: Theme.windowBackground

            Divider {
                id: divider

                height: parent.height
            }
            Item {
                id: previewPane

                anchors.left: divider.right
                anchors.right: parent.right
                height: parent.height
            }
        }
    ]
}
