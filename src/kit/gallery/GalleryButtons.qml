// Buttons in all their states.
import QtQuick
import Corvane.Kit

GallerySection {
    title: "Buttons"

    Row {
        x: 102
        spacing: 10

        Repeater {
            model: ["rest", "hover", "pressed", "focus", "off"]

            Label {
                required property string modelData

                width: 66
                text: modelData
                textStyle: Theme.smallStyle
                muted: true
            }
        }
    }
    GalleryButtonStates { title: "plain"; text: "Label" }
    GalleryButtonStates { title: "primary"; text: "Label"; kind: Button.Primary }
    GalleryButtonStates { title: "bare"; text: "Label"; kind: Button.Bare }
    GalleryButtonStates { title: "icon"; symbol: "book.fill"; helpText: "Guide" }
    GalleryButtonStates { title: "delete"; symbol: "trash"; helpText: "Delete"; destructive: true }
    GalleryRow {
        title: "with icon"

        Button { anchors.verticalCenter: parent.verticalCenter; symbol: "tray.and.arrow.down"; text: "Import" }
        Button { anchors.verticalCenter: parent.verticalCenter; trailingSymbol: "chevron.down"; small: true; text: "Sort: Filename" }
        Button { anchors.verticalCenter: parent.verticalCenter; large: true; text: "Cancel" }
    }
}
