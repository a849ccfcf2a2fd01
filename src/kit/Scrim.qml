// The dimmed background behind a modal popup, for Overlay.modal.
import QtQuick

Rectangle {
    color: Theme.scrim

    Behavior on opacity {
        NumberAnimation { duration: Theme.sheetDuration }
    }
}
