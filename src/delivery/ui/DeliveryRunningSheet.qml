// The running stage of a delivery.
//   sheet: DeliverySheet
import QtQuick
import Corvane.Kit
import Corvane.Delivery

RunningSheet {
    id: control

    required property DeliverySheet sheet

    visible: sheet.isOpen && sheet.stage === "running"
    fileName: sheet.run.line
    figure: sheet.run.percent
    figureIsStrong: true
    fraction: sheet.run.fraction
    details: sheet.run.details
    timeLeft: sheet.run.timeLeft
    buttonText: sheet.cancelText
    buttonEnabled: sheet.canCancel
    onCancelled: control.sheet.requestCancel()
}
