// One question for a file, asked as soon as it is made.
//   panels: what is asked, and who is told the answer
import QtQuick
import QtQuick.Dialogs
import Corvane.Shell

FileDialog {
    id: dialog

    required property DialogFilePanels panels

    objectName: "fileDialog"
    title: panels.title
    acceptLabel: panels.acceptLabel
    fileMode: panels.kind === DialogFilePanels.saveFile ? FileDialog.SaveFile
              : panels.kind === DialogFilePanels.openFiles ? FileDialog.OpenFiles
              : FileDialog.OpenFile
    nameFilters: panels.nameFilters
    defaultSuffix: panels.defaultSuffix
    currentFolder: panels.folder
    onAccepted: panels.accept(selectedFiles)
    onRejected: panels.reject()
    Component.onCompleted: {
        if (panels.kind === DialogFilePanels.saveFile) {
            selectedFile = panels.proposedFile;
        }
        open();
    }
}
