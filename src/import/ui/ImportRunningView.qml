// The run of an import.
//   screen: the sheet's state
import QtQuick
import Corvane.Import
import Corvane.Kit

RunningSheet {
    id: sheet

    required property ImportSheet screen

    objectName: "import.running"
    title: qsTr("Import Footage — Importing")
    fileName: screen.fileName
    figure: screen.figure
    fraction: screen.fraction
    details: screen.details
    timeLeft: screen.timeLeft
    buttonText: screen.cancelText
    buttonEnabled: screen.canCancel
    onCancelled: screen.cancelImport()
}
