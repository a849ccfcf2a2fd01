// A popup over a dimmed window that neither Esc nor a click outside closes.
import QtQuick
import QtQuick.Templates as T

T.Popup {
    parent: T.Overlay.overlay
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    T.Overlay.modal: Scrim {}

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.sheetDuration }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.sheetDuration }
    }

    background: BorderedPanel {
        radius: Theme.sheetRadius
    }
}
