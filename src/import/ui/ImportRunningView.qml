// Stage `importing`: the progress of the run.
//   sheet: ImportSheet
import QtQuick
import Corvane.Import
import Corvane.Kit

RunningSheet {
    required property ImportSheet sheet

    objectName: "import.running"
    title: qsTr("Import Footage — Importing")
    fileName: sheet.run.fileName
    figure: sheet.run.figure
    fraction: sheet.run.fraction
    details: sheet.run.details
    timeLeft: sheet.run.timeLeft
    buttonText: sheet.cancelText
    buttonEnabled: sheet.canCancel
    onCancelled: sheet.cancelImport()
}
