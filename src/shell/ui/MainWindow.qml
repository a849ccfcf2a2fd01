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
    onClosing: close => close.accepted = app.closeWindow()

    menuBar: MenuBar {
        id: menus

        objectName: "menus"
        Component.onCompleted: {
            for (const menu of window.app.commands.menus) {
                addMenu(commandMenu.createObject(menus, { app: window.app, menu: menu }));
            }
        }
    }

    Component {
        id: commandMenu

        CommandMenu {}
    }

    Instantiator {
        model: window.app.commands.all

        delegate: Shortcut {
            required property AppCommand modelData

            sequence: modelData.shortcut
            autoRepeat: false
            enabled: modelData.enabled && modelData.shortcut !== ""
            onActivated: modelData.trigger()
        }
    }

    Connections {
        target: window.app.commands

        function onHelpRequested() {
            if (!helpLoader.item) {
                helpLoader.setSource("HelpWindow.qml", { help: window.app.help });
            }
            const help = helpLoader.item as AppWindow;
            help.show();
            help.raise();
            help.requestActivate();
        }
    }

    ContentView {
        anchors.fill: parent
        app: window.app
    }

    Connections {
        target: window.app.dialogs

        function onDialogRequested() {
            const panels = window.app.dialogs;
            dialogLoader.source = ""; // discards the previous dialog
            dialogLoader.setSource(panels.kind === DialogFilePanels.OpenFolder
                                   ? "FolderPanelDialog.qml" : "PanelDialog.qml",
                                   { panels: panels });
        }
    }

    Loader {
        id: dialogLoader
    }

    Loader {
        id: helpLoader
    }
}
