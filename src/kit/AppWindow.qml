// An application window in the theme's colors, with help texts.
import QtQuick
import QtQuick.Templates as T

T.ApplicationWindow {
    color: Theme.windowBackground
    font: Theme.bodyStyle.font

    HelpTip {
        // Above the overlay with sheets and menus. Not in it: an empty overlay is hidden.
        parent: T.Overlay.overlay.parent
        z: T.Overlay.overlay.z + 1
    }
}
