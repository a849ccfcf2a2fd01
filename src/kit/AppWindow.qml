// An application window in the theme's colors, with help texts.
//   helpTip: HelpTip, shows the help texts; an ApplicationWindow otherwise
import QtQuick
import QtQuick.Templates as T

T.ApplicationWindow {
    id: window

    readonly property alias helpTip: tip

    color: Theme.windowBackground
    font: Theme.bodyStyle.font

    HelpTip {
        id: tip

        // Above the overlay with sheets and menus. Not in it: an empty overlay is hidden.
        parent: T.Overlay.overlay.parent
        z: T.Overlay.overlay.z + 1
    }
}
