// Buttons in all their states.
import QtQuick
import Corvane.Kit

GallerySection {
    title: "Buttons"

    Row {
        x: 102
        spacing: 10

        Label { width: 66; text: "rest"; textStyle: Theme.smallStyle; muted: true }
        Label { width: 66; text: "hover"; textStyle: Theme.smallStyle; muted: true }
        Label { width: 66; text: "pressed"; textStyle: Theme.smallStyle; muted: true }
        Label { width: 66; text: "focus"; textStyle: Theme.smallStyle; muted: true }
        Label { width: 66; text: "off"; textStyle: Theme.smallStyle; muted: true }
    }
    GalleryRow {
        title: "plain"

        GalleryState { Button { objectName: "plain"; width: parent.width; text: "Label" } }
        GalleryState { Button { width: parent.width; text: "Label"; showsHover: true } }
        GalleryState { Button { width: parent.width; text: "Label"; down: true } }
        GalleryState { Button { width: parent.width; text: "Label"; showsFocusRing: true } }
        GalleryState { Button { width: parent.width; text: "Label"; enabled: false } }
    }
    GalleryRow {
        title: "primary"

        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Primary } }
        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Primary; showsHover: true } }
        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Primary; down: true } }
        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Primary; showsFocusRing: true } }
        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Primary; enabled: false } }
    }
    GalleryRow {
        title: "bare"

        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Bare } }
        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Bare; showsHover: true } }
        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Bare; down: true } }
        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Bare; showsFocusRing: true } }
        GalleryState { Button { width: parent.width; text: "Label"; kind: Button.Bare; enabled: false } }
    }
    GalleryRow {
        title: "icon"

        GalleryState { Button { symbol: "book.fill"; helpText: "Guide" } }
        GalleryState { Button { symbol: "book.fill"; helpText: "Guide"; showsHover: true } }
        GalleryState { Button { symbol: "book.fill"; helpText: "Guide"; down: true } }
        GalleryState { Button { symbol: "book.fill"; helpText: "Guide"; showsFocusRing: true } }
        GalleryState { Button { symbol: "book.fill"; helpText: "Guide"; enabled: false } }
    }
    GalleryRow {
        title: "delete"

        GalleryState { Button { symbol: "trash"; destructive: true; helpText: "Delete" } }
        GalleryState { Button { symbol: "trash"; destructive: true; helpText: "Delete"; showsHover: true } }
        GalleryState { Button { symbol: "trash"; destructive: true; helpText: "Delete"; down: true } }
        GalleryState { Button { symbol: "trash"; destructive: true; helpText: "Delete"; showsFocusRing: true } }
        GalleryState { Button { symbol: "trash"; destructive: true; helpText: "Delete"; enabled: false } }
    }
    GalleryRow {
        title: "with icon"

        Button { anchors.verticalCenter: parent.verticalCenter; symbol: "tray.and.arrow.down"; text: "Import" }
        Button { anchors.verticalCenter: parent.verticalCenter; trailingSymbol: "chevron.down"; small: true; text: "Sort: Filename" }
        Button { anchors.verticalCenter: parent.verticalCenter; large: true; text: "Cancel" }
    }
}
