// The screen of the session's state, and the alerts over it. A project file dropped on it opens.
//   app: the application
// Qt 6.4 has no way to say that a component knows what surrounds it.
// qmllint disable unqualified
import QtQuick
import Corvane.Shell

FocusScope {
    id: root

    required property CorvaneApp app

    focus: true
    Component.onCompleted: showScreen()

    // Only the screen that shows is loaded, so that the first is there at once.
    function showScreen() {
        if (app.router.screen === ContentRouter.Project) {
            const bound = app.projectScreen; // made now, before its module is looked for
            if (bound) {
                screen.setSource("../Project/ProjectLoadedView.qml", { app: app, screen: bound });
            }
        } else {
            screen.setSource(app.router.screen === ContentRouter.Setup ? "ProjectSetupView.qml"
                                                                       : "HomeView.qml",
                             { app: app });
        }
    }

    Connections {
        target: root.app.router

        function onScreenChanged() {
            root.showScreen();
        }
    }

    Loader {
        id: screen

        anchors.fill: parent
        focus: true
    }

    DropArea {
        anchors.fill: parent
        keys: ["text/uri-list"]
        onEntered: drag => drag.accepted = root.app.router.canOpenDropped(drag.urls)
        onDropped: drop => root.app.router.openDropped(drop.urls)
    }

    // Each alert is made with the first that it has to tell.
    Loader {
        active: root.app.router.hasError || item !== null
        Component.onCompleted: setSource("ErrorAlert.qml", { router: root.app.router })
    }

    Loader {
        active: root.app.updater.resultText !== "" || item !== null
        Component.onCompleted: setSource("UpdateAlert.qml", { updater: root.app.updater })
    }
}
