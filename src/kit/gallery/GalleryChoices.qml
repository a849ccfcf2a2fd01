// Chips, menus, fields and choices in their states.
import QtQuick
import Corvane.Kit

Column {
    id: choices

    property int handles: 2
    readonly property alias menu: ratingMenu

    GallerySection {
        width: parent.width
        title: "Chips and menus"

        GalleryRow {
            title: "chip"

            Chip { anchors.verticalCenter: parent.verticalCenter; objectName: "chip"; text: "Favorites" }
            Chip { anchors.verticalCenter: parent.verticalCenter; text: "Favorites"; showsHover: true }
            Chip { anchors.verticalCenter: parent.verticalCenter; text: "Favorites"; checked: true }
            Chip { anchors.verticalCenter: parent.verticalCenter; text: "Favorites"; checked: true; showsFocusRing: true }
            Chip { anchors.verticalCenter: parent.verticalCenter; text: "Favorites"; enabled: false }
        }
        GalleryRow {
            title: "rating menu"

            Chip { anchors.verticalCenter: parent.verticalCenter; objectName: "ratingChip"; text: "Rating"; menu: ratingMenu }
            Chip { anchors.verticalCenter: parent.verticalCenter; text: "3★+"; checked: true; menu: ratingMenu }
            Chip { anchors.verticalCenter: parent.verticalCenter; text: "5★"; checked: true; menu: ratingMenu }
        }
        Item {
            width: parent.width
            height: 188
        }
        GalleryRow {
            title: "help text"

            Chip { anchors.verticalCenter: parent.verticalCenter; objectName: "helped"; text: "Rest here"; helpText: "Mark every visible item with the export S flag" }
        }
    }

    GallerySection {
        width: parent.width
        title: "Fields and choices"

        GalleryRow {
            title: "field"

            TextField { anchors.verticalCenter: parent.verticalCenter; objectName: "field"; width: 104; placeholderText: "Optional" }
            TextField { anchors.verticalCenter: parent.verticalCenter; width: 104; name: "Hover"; text: "hover"; showsHover: true }
            TextField { anchors.verticalCenter: parent.verticalCenter; width: 104; name: "Focus"; text: "focus"; showsFocusRing: true }
        }
        GalleryRow {
            title: "check box"

            CheckBox { anchors.verticalCenter: parent.verticalCenter; objectName: "check"; width: 84; text: "off" }
            CheckBox { anchors.verticalCenter: parent.verticalCenter; width: 84; text: "on"; checked: true }
            CheckBox { anchors.verticalCenter: parent.verticalCenter; width: 84; text: "focus"; checked: true; showsFocusRing: true }
            CheckBox { anchors.verticalCenter: parent.verticalCenter; text: "disabled"; enabled: false }
        }
        GalleryRow {
            title: "switch"
            gap: 26

            Switch { anchors.verticalCenter: parent.verticalCenter; objectName: "switch"; helpText: "Off" }
            Switch { anchors.verticalCenter: parent.verticalCenter; helpText: "On"; checked: true }
            Switch { anchors.verticalCenter: parent.verticalCenter; helpText: "Focus"; checked: true; showsFocusRing: true }
        }
        GalleryRow {
            title: "choice"

            SegmentedChoice {
                anchors.verticalCenter: parent.verticalCenter
                objectName: "handles"
                name: "Subclip handles"
                model: ["None", "0.5s", "1s", "2s", "4s"]
                currentIndex: choices.handles
                onActivated: index => choices.handles = index
            }
        }
        GalleryRow {
            title: "progress"

            ProgressBar { anchors.verticalCenter: parent.verticalCenter; objectName: "progress"; width: 220; name: "Exporting"; value: 0.38 }
            TabularLabel { anchors.verticalCenter: parent.verticalCenter; text: "38%"; textStyle: Theme.bodyStrongStyle }
        }
    }

    PopUpMenu {
        id: ratingMenu

        name: "Rating"

        MenuItem { objectName: "rating.off"; text: "Off" }
        MenuDivider {}
        MenuItem { objectName: "rating.1"; text: "1★+" }
        MenuItem { objectName: "rating.2"; text: "2★+" }
        MenuItem { objectName: "rating.3"; text: "3★+"; checkable: true; checked: true }
        MenuItem { objectName: "rating.4"; text: "4★+"; enabled: false; helpText: "Nothing is rated so high" }
        MenuItem { objectName: "rating.5"; text: "5★ only"; shortcutText: "Ctrl+5" }
    }
}
