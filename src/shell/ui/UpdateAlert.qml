// Shows the result of a check for updates until it is dismissed.
import QtQuick
import Corvane.Kit
import Corvane.Shell

Alert {
    required property UpdaterController updater

    objectName: "updateResult"
    subject: updater.resultText !== "" ? { title: updater.resultTitle, text: updater.resultText }
                                       : null
    onAccepted: updater.dismissResult()
}
