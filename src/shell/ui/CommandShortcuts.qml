// The commands' keyboard shortcuts, for the window that contains this item.
//   commands: the commands
import QtQuick
import Corvane.Shell

Item {
    id: root

    required property AppCommands commands

    Instantiator {
        model: root.commands.all

        delegate: Shortcut {
            required property AppCommand modelData

            sequence: modelData.shortcut
            autoRepeat: false
            enabled: modelData.enabled && modelData.shortcut !== ""
            onActivated: modelData.trigger()
        }
    }
}
