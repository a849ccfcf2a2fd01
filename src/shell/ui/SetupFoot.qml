// The foot of the setup form.
//   canCreate: bool; signals cancelled(), accepted()
import QtQuick
import Corvane.Kit

Item {
    id: foot

    property bool canCreate: false

    signal cancelled()
    signal accepted()

    implicitHeight: buttons.y + buttons.height

    Divider { // on the screen's own pixels, wherever the text above it ends
        y: Math.ceil(foot.y + Theme.spacing12) - foot.y
        width: parent.width
    }

    Row {
        id: buttons

        anchors.right: parent.right
        y: Theme.spacing12 + Theme.spacing16
        spacing: Theme.buttonGap

        Button {
            objectName: "setup.cancel"
            large: true
            text: qsTr("Cancel")
            onClicked: foot.cancelled()
        }

        Button {
            objectName: "setup.create"
            kind: Button.Primary
            large: true
            text: qsTr("Create project")
            enabled: foot.canCreate
            onClicked: foot.accepted()
        }
    }
}
