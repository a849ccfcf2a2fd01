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
    fileMode: panels.isSaving ? FileDialog.SaveFile : FileDialog.OpenFile
    nameFilters: panels.nameFilters
    defaultSuffix: panels.defaultSuffix
    currentFolder: panels.folder
    onAccepted: panels.accept(selectedFile)
    onRejected: panels.reject()
    Component.onCompleted: {
        if (panels.isSaving) {
            selectedFile = panels.proposedFile;
        }
        open();
    }
}
