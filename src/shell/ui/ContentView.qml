// The current screen of the session and the alerts over it. Opens project files that are dropped on
// it.
//   app: the application
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Shell

FocusScope {
    id: root

    required property CorvaneApp app

    focus: true
    Component.onCompleted: showScreen()

    // Loads only the visible screen, for a fast start.
    function showScreen() {
        if (app.router.screen === ContentRouter.Project) {
            const bound = app.projectScreen; // loads the module that contains the view
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

    // Alerts are created on first use.
    Loader {
        active: root.app.router.hasError || item !== null
        Component.onCompleted: setSource("ErrorAlert.qml", { router: root.app.router })
    }

    Loader {
        active: Boolean(root.app.sessionAlert.subject) || item !== null
        Component.onCompleted: setSource("ProjectFileAlert.qml", { alert: root.app.sessionAlert })
    }

    Loader {
        active: root.app.updater.resultText !== "" || item !== null
        Component.onCompleted: setSource("UpdateAlert.qml", { updater: root.app.updater })
    }
}
