// The kit's controls in their states, for screenshots and tests.
//   openMenu(): opens the menu below its chip
import QtQuick
import Corvane.Kit

AppWindow {
    id: gallery

    function openMenu() {
        choices.menu.openBelow(choices, false);
        choices.menu.x = 102;
        choices.menu.y = 152;
    }

    width: 1440
    height: 1180
    color: Theme.panelBackground

    menuBar: MenuBar {
        PopUpMenu {
            title: "File"

            MenuItem { text: "New Project"; shortcutText: "Ctrl+N" }
            MenuItem { text: "Open Project…"; shortcutText: "Ctrl+O" }
            MenuDivider {}
            MenuItem { text: "Save Project"; shortcutText: "Ctrl+S"; enabled: false }
        }
        PopUpMenu {
            title: "Help"

            MenuItem { text: "Corvane Help"; shortcutText: "F1" }
        }
    }

    Column {
        x: 28
        y: Theme.spacing24
        width: parent.width - 56

        Row {
            spacing: 40

            Column {
                width: 480

                GalleryButtons { width: parent.width }
                GalleryChoices { id: choices; width: parent.width }
            }
            GalleryTypes { width: 302 }
            GalleryMarks { width: 522 }
        }
        GalleryIcons { width: parent.width }
    }
}
