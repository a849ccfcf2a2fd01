// The menu bar of the main window.
//   app: the application
import QtQuick
import Corvane.Kit
import Corvane.Shell

MenuBar {
    id: bar

    required property CorvaneApp app

    objectName: "menus"
    Component.onCompleted: {
        for (const menu of app.commands.menus) {
            addMenu(commandMenu.createObject(bar, { app: app, menu: menu }));
        }
    }

    Component {
        id: commandMenu

        CommandMenu {}
    }
}
