// Stage `scanning`.
import QtQuick
import Corvane.Import
import Corvane.Kit

ImportStage {
    id: stage

    defaultButton: cancel
    footer: Row {
        Button {
            id: cancel

            objectName: "import.cancelScan"
            large: true
            text: qsTr("Cancel")
            onClicked: stage.sheet.escape()
        }
    }

    Row {
        anchors.centerIn: parent
        spacing: Theme.spacing12

        Spinner {
            anchors.verticalCenter: parent.verticalCenter
            objectName: "import.spinner"
            name: label.text
        }
        Label {
            id: label

            objectName: "import.scanning"
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Scanning sources…")
        }
    }
}
