// The results of a handoff.
//   sheet: HandoffSheet
import Corvane.Delivery

DeliveryDoneSheet {
    objectName: "handoff.done"
    againText: qsTr("Hand Off Again")
    resultSymbol: "shippingbox.fill"
    revealText: qsTr("Reveal in Finder")
}
