// The sheet of a delivery's run.
//   screen: DeliveryScreenState
import QtQuick
import Corvane.Kit
import Corvane.Delivery

RunningSheet {
    id: control

    required property DeliveryScreenState screen

    visible: screen.isOpen && screen.stage === DeliveryScreenState.Running
    fileName: screen.progressLine
    figure: screen.percent
    figureIsStrong: true
    fraction: screen.fraction
    details: screen.details
    timeLeft: screen.timeLeft
    buttonText: screen.cancelText
    buttonEnabled: screen.canCancel
    onCancelled: control.screen.requestCancel()
}
