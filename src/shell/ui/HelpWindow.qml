// The window of the user guide. It has no menus.
//   help: the guide
import QtQuick
import Corvane.Kit
import Corvane.Shell

AppWindow {
    id: window

    required property HelpDocument help

    objectName: help.windowId
    title: help.windowTitle
    width: Theme.helpWidth
    height: Theme.helpHeight
    minimumWidth: Theme.helpMinWidth
    minimumHeight: Theme.helpMinHeight

    HelpView {
        anchors.fill: parent
        help: window.help
    }
}
