// The main window: the menus, the current screen, and its dialogs. Closing it quits the
// application.
//   app: the application
import QtQuick
import Corvane.Kit
import Corvane.Shell

AppWindow {
    id: window

    required property CorvaneApp app
    property int visibilityBefore: Window.Windowed // full screen

    title: app.router.windowTitle
    width: Theme.windowWidth
    height: Theme.windowHeight
    minimumWidth: Theme.windowMinWidth
    minimumHeight: Theme.windowMinHeight
    onVisibilityChanged: app.commands.isFullScreen = window.visibility === Window.FullScreen
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

            sequences: modelData.shortcuts
            context: modelData.isApplicationWide ? Qt.ApplicationShortcut : Qt.WindowShortcut
            autoRepeat: false
            enabled: modelData.enabled
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

        function onQuitRequested() {
            window.close();
            if (window.visible) { // a question may keep it open
                window.raise();
                window.requestActivate();
            }
        }

        function onFullScreenChanged() {
            const isWanted = window.app.commands.isFullScreen;
            if (isWanted === (window.visibility === Window.FullScreen)) {
                return;
            }
            if (isWanted) {
                window.visibilityBefore = window.visibility;
            }
            window.visibility = isWanted ? Window.FullScreen : window.visibilityBefore;
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
