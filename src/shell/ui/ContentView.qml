// The screen of the session's state, and the alerts over it. A project file dropped on it opens.
//   app: the application
import QtQuick
import Corvane.Shell

FocusScope {
    id: root

    required property CorvaneApp app

    focus: true
    Component.onCompleted: showScreen()

    // Only the screen that shows is loaded, so that the first is there at once.
    function showScreen() {
        const screens = {
            [ContentRouter.Home]: "HomeView.qml",
            [ContentRouter.Setup]: "ProjectSetupView.qml",
            [ContentRouter.Project]: "ProjectView.qml"
        };
        screen.setSource(screens[app.router.screen], { app: app });
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

    ErrorAlert {
        router: root.app.router
    }

    UpdateAlert {
        updater: root.app.updater
    }
}
