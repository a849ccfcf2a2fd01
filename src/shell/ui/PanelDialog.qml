// A dialog to open or save files. Opens when created.
//   panels: the request, which receives the answer
import QtQuick
import QtQuick.Dialogs
import Corvane.Shell

FileDialog {
    id: dialog

    required property DialogFilePanels panels

    objectName: "fileDialog"
    title: panels.title
    acceptLabel: panels.acceptLabel
    fileMode: panels.kind === DialogFilePanels.SaveFile ? FileDialog.SaveFile
              : panels.kind === DialogFilePanels.OpenFiles ? FileDialog.OpenFiles
              : FileDialog.OpenFile
    nameFilters: panels.nameFilters
    defaultSuffix: panels.defaultSuffix
    currentFolder: panels.folder
    onAccepted: panels.accept(selectedFiles)
    onRejected: panels.reject()
    Component.onCompleted: {
        if (panels.kind === DialogFilePanels.SaveFile) {
            selectedFile = panels.proposedFile;
        }
        open();
    }
}
