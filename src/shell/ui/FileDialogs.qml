// The desktop's file dialogs for what the program asks, made when first asked.
//   panels: what is asked, and who is told the answer
import QtQuick
import QtQuick.Dialogs
import Corvane.Shell

Item {
    id: root

    required property DialogFilePanels panels

    Connections {
        target: root.panels

        function onAsked() {
            loader.active = true;
            const dialog = loader.item as FileDialog;
            dialog.title = root.panels.title;
            dialog.fileMode = root.panels.isSaving ? FileDialog.SaveFile : FileDialog.OpenFile;
            dialog.nameFilters = root.panels.nameFilters;
            dialog.defaultSuffix = root.panels.defaultSuffix;
            dialog.currentFolder = root.panels.folder;
            if (root.panels.isSaving) {
                dialog.selectedFile = root.panels.proposedFile;
            }
            dialog.open();
        }
    }

    Loader {
        id: loader

        active: false
        sourceComponent: FileDialog {
            onAccepted: root.panels.accept(selectedFile)
            onRejected: root.panels.reject()
        }
    }
}
