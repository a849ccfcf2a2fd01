// Shows a file dialog of the desktop for each request of the application.
//   panels: the requests
import QtQuick
import Corvane.Shell

Item {
    id: root

    required property DialogFilePanels panels

    Connections {
        target: root.panels

        function onDialogRequested() {
            loader.source = ""; // discards the previous dialog
            loader.setSource(root.panels.kind === DialogFilePanels.OpenFolder
                             ? "FolderPanelDialog.qml" : "PanelDialog.qml",
                             { panels: root.panels });
        }
    }

    Loader {
        id: loader
    }
}
