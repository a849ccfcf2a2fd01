// The footer of the setup form.
//   canCreate: bool; signals cancelled(), accepted()
import QtQuick
import Corvane.Kit

Item {
    id: footer

    property bool canCreate: false

    signal cancelled()
    signal accepted()

    implicitHeight: buttons.y + buttons.height

    Divider { // aligned to device pixels
        y: Math.ceil(footer.y + Theme.spacing12) - footer.y
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
            onClicked: footer.cancelled()
        }

        Button {
            objectName: "setup.create"
            kind: Button.Primary
            large: true
            text: qsTr("Create project")
            enabled: footer.canCreate
            onClicked: footer.accepted()
        }
    }
}
