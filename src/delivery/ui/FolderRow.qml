// The destination folder and the button that chooses it.
//   sheet: DeliverySheet; label, help: string; name: string, of the items: "<name>.path" and
//   "<name>.choose"; chooser: the button; default content: more buttons after it
import QtQuick
import Corvane.Kit
import Corvane.Delivery

LabelledRow {
    id: row

    required property DeliverySheet sheet
    property string name
    property alias chooser: choose
    default property alias buttons: buttonRow.data

    Item {
        width: parent.width
        height: Theme.controlHeight

        Rectangle {
            width: parent.width - buttonRow.width - Theme.buttonGap
            height: parent.height
            radius: Theme.controlRadius
            color: Theme.fieldBackground
            border.width: Theme.hairline
            border.color: Theme.panelBorder

            Icon {
                id: glyph

                x: Theme.spacing8
                anchors.verticalCenter: parent.verticalCenter
                symbol: "folder"
                size: Theme.buttonIconSize
            }
            Label {
                objectName: row.name + ".path"
                anchors.left: glyph.right
                anchors.leftMargin: Theme.spacing6
                anchors.right: parent.right
                anchors.rightMargin: Theme.spacing8
                anchors.verticalCenter: parent.verticalCenter
                text: row.sheet.folderLine
                literal: true
                HelpText.text: truncated ? row.sheet.folder : ""
                Accessible.name: row.label + ": " + row.sheet.folderLine
            }
        }
        Row {
            id: buttonRow

            anchors.right: parent.right
            spacing: Theme.buttonGap

            Button {
                id: choose

                objectName: row.name + ".choose"
                text: qsTr("Choose Folder…")
                onClicked: row.sheet.chooseFolder()
            }
        }
    }
}
