// What a check for updates found, until it was seen.
//   updater: what made the check
import QtQuick
import Corvane.Kit
import Corvane.Shell

Alert {
    id: root

    required property UpdaterController updater

    function follow() {
        if (updater.resultText !== "") {
            text = updater.resultText;
            open();
        } else {
            close();
        }
    }

    objectName: "updateResult"
    title: updater.resultTitle
    onAccepted: updater.dismissResult()
    Component.onCompleted: follow()

    property Connections connections: Connections {
        target: root.updater

        function onResultTextChanged() {
            root.follow();
        }
    }
}
