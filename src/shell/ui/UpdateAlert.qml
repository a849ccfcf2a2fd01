// What a check for updates found, until it was seen.
//   updater: what made the check
import QtQuick
import Corvane.Kit
import Corvane.Shell

Alert {
    id: root

    required property UpdaterController updater

    objectName: "updateResult"
    title: updater.resultTitle
    onAccepted: updater.dismissResult()

    property Connections connections: Connections {
        target: root.updater

        function onResultTextChanged() {
            if (root.updater.resultText !== "") {
                root.text = root.updater.resultText;
                root.open();
            } else {
                root.close();
            }
        }
    }
}
