// A menu of commands.
//   app: the application; menu: an entry of AppCommands.menus
import QtQuick
import Corvane.Kit
import Corvane.Shell

PopUpMenu {
    id: root

    required property CorvaneApp app
    required property var menu

    objectName: "menu." + menu.title
    title: menu.title
    mnemonic: menu.mnemonic
    // Filled on first use, so that the first frame doesn't wait for it.
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
                addMenu(recentProjects.createObject(root, { app: app, mnemonic: entry.mnemonic }));
            } else {
                addItem(commandItem.createObject(root.contentItem,
                                                 { command: entry.command, mnemonic: entry.mnemonic }));
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
            checkable: command.isCheckable
            checked: command.isChecked
            helpText: command.toolTip
            onTriggered: command.trigger()
        }
    }
}
