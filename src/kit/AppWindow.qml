// A window of the program, with its ground and its help texts.
//   everything of ApplicationWindow; helpTip: the item that shows help texts
import QtQuick
import QtQuick.Templates as T

T.ApplicationWindow {
    id: window

    readonly property alias helpTip: tip

    color: Theme.windowBackground
    font: Theme.bodyStyle.font

    HelpTip {
        id: tip

        // Above sheets and menus, which lie in the overlay; that one is hidden while it is empty.
        parent: T.Overlay.overlay.parent
        z: T.Overlay.overlay.z + 1
    }
}
