// A dialog to choose a folder. Opens when created.
//   panels: the request, which receives the answer
import QtQuick
import QtQuick.Dialogs
import Corvane.Shell

FolderDialog {
    id: dialog

    required property DialogFilePanels panels

    objectName: "folderDialog"
    title: panels.title
    acceptLabel: panels.acceptLabel
    currentFolder: panels.folder
    onAccepted: panels.accept([selectedFolder])
    onRejected: panels.reject()
    Component.onCompleted: open()
}
