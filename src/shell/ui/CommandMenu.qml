// One menu: a row for each command, with its keys and its help text, enabled while the command is.
//   app: the application; menu: what hangs in it
import QtQuick
import Corvane.Kit
import Corvane.Shell

PopUpMenu {
    id: root

    required property CorvaneApp app
    required property var menu

    objectName: "menu." + menu.title
    title: menu.title
    // Not before it is wanted: the first frame needn't wait for what nobody sees yet.
    onAboutToShow: {
        if (count === 0) {
            fill();
        }
    }

    function fill() {
        for (const entry of menu.entries) {
            if (entry.isDivider) {
                addItem(divider.createObject(root.contentItem));
            } else if (entry.isRecentProjects) {
                addMenu(recentProjects.createObject(root, { app: app }));
            } else {
                addItem(commandItem.createObject(root.contentItem, { command: entry.command }));
            }
        }
    }

    Component {
        id: divider

        MenuDivider {}
    }

    Component {
        id: recentProjects

        RecentProjectsMenu {}
    }

    Component {
        id: commandItem

        MenuItem {
            required property AppCommand command

            objectName: "menu." + command.id
            text: command.label
            shortcutText: Format.keys(command.shortcut)
            enabled: command.enabled
            helpText: command.toolTip
            onTriggered: command.trigger()
        }
    }
}
