// Shows a question about the open project's file until it is answered.
import QtQuick
import Corvane.Kit
import Corvane.Shell

Alert {
    required property SessionAlert alert

    objectName: "projectFile"
    prominent: !destructive
    subject: alert.subject
    onAccepted: alert.accept()
    onRejected: alert.cancel()
    onChosen: answer => alert.choose(answer)
}
