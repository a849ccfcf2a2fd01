// The menus of the main window, as the application lists them.
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
