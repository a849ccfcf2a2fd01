// The running stage of a delivery.
//   sheet: DeliverySheet
import QtQuick
import Corvane.Kit
import Corvane.Delivery

RunningSheet {
    id: control

    required property DeliverySheet sheet

    visible: sheet.isOpen && sheet.stage === DeliverySheet.Running
    fileName: sheet.progressLine
    figure: sheet.percent
    figureIsStrong: true
    fraction: sheet.fraction
    details: sheet.details
    timeLeft: sheet.timeLeft
    buttonText: sheet.cancelText
    buttonEnabled: sheet.canCancel
    onCancelled: control.sheet.requestCancel()
}
