// The screen of the session's state, and the alerts over it. A project file dropped on it opens.
//   app: the application
// Qt 6.4 has no way to say that a delegate knows what surrounds it.
// qmllint disable unqualified
import QtQuick
import Corvane.Shell

FocusScope {
    id: root

    required property CorvaneApp app

    focus: true

    Loader {
        anchors.fill: parent
        focus: true
        sourceComponent: root.app.router.screen === ContentRouter.Project ? project
                       : root.app.router.screen === ContentRouter.Setup ? setup : home
    }

    Component {
        id: home

        HomeView {
            app: root.app
        }
    }

    Component {
        id: setup

        ProjectSetupView {
            setup: root.app.setup
            onDismissed: root.app.router.leaveSetup()
        }
    }

    Component {
        id: project

        ProjectView {
            app: root.app
        }
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
