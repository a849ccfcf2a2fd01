// The alert with the session's last error, up while there is one.
//   router: what knows the error
import QtQuick
import Corvane.Kit
import Corvane.Shell

Alert {
    id: root

    required property ContentRouter router

    function follow() {
        if (router.hasError) {
            text = router.errorMessage;
            open();
        } else {
            close();
        }
    }

    objectName: "projectError"
    title: router.errorTitle
    prominent: true
    onAccepted: router.dismissError()
    Component.onCompleted: follow()

    property Connections connections: Connections {
        target: root.router

        function onErrorChanged() {
            root.follow();
        }
    }
}
