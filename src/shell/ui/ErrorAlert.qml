// Shows the session's last error until it is dismissed.
import QtQuick
import Corvane.Kit
import Corvane.Shell

Alert {
    required property ContentRouter router

    objectName: "projectError"
    prominent: true
    subject: router.hasError ? { title: router.errorTitle, text: router.errorMessage } : null
    onAccepted: router.dismissError()
}
