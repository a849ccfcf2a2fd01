// One question for a folder, asked as soon as it is made.
//   panels: what is asked, and who is told the answer
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
