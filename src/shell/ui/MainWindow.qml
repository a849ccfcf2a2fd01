// The main window: the menus, the current screen, and its dialogs. Closing it quits the
// application.
//   app: the application
import QtQuick
import Corvane.Kit
import Corvane.Shell

AppWindow {
    id: window

    required property CorvaneApp app

    title: app.productName
    width: Theme.windowWidth
    height: Theme.windowHeight
    minimumWidth: Theme.windowMinWidth
    minimumHeight: Theme.windowMinHeight
    onClosing: app.quit()

    function showHelp() {
        if (!helpLoader.item) {
            helpLoader.setSource("HelpWindow.qml", { help: app.help });
        }
        const help = helpLoader.item as AppWindow;
        help.show();
        help.raise();
        help.requestActivate();
    }

    menuBar: MainMenu {
        app: window.app
    }

    CommandShortcuts {
        commands: window.app.commands
    }

    Connections {
        target: window.app.commands

        function onHelpRequested() {
            window.showHelp();
        }
    }

    ContentView {
        anchors.fill: parent
        app: window.app
    }

    FileDialogs {
        panels: window.app.dialogs
    }

    Loader {
        id: helpLoader
    }
}
