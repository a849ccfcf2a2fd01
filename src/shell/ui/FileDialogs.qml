// The desktop's file dialogs for what the program asks, made anew for each.
//   panels: what is asked, and who is told the answer
// Qt 6.4 has no way to say that a delegate knows what surrounds it.
// qmllint disable unqualified
import QtQuick
import QtQuick.Dialogs
import Corvane.Shell

Item {
    id: root

    required property DialogFilePanels panels

    Connections {
        target: root.panels

        function onAsked() {
            loader.active = false; // nothing of the last question stays
            loader.active = true;
            const dialog = loader.item as FileDialog;
            dialog.title = root.panels.title;
            dialog.acceptLabel = root.panels.acceptLabel;
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
            objectName: "fileDialog"
            onAccepted: root.panels.accept(selectedFile)
            onRejected: root.panels.reject()
        }
    }
}
