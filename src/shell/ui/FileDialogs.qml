// The desktop's file dialogs for what the program asks, made anew for each question.
//   panels: what is asked, and who is told the answer
import QtQuick
import Corvane.Shell

Item {
    id: root

    required property DialogFilePanels panels

    Connections {
        target: root.panels

        function onAsked() {
            loader.source = ""; // nothing of the last question stays
            loader.setSource(root.panels.kind === DialogFilePanels.OpenFolder
                             ? "FolderPanelDialog.qml" : "PanelDialog.qml",
                             { panels: root.panels });
        }
    }

    Loader {
        id: loader
    }
}
