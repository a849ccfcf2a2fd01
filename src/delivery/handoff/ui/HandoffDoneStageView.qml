// What a handoff made.
//   sheet: HandoffSheet
import Corvane.Delivery

DeliveryDoneSheet {
    objectName: "handoff.done"
    againText: qsTr("Hand Off Again")
    placeSymbol: "shippingbox.fill"
    revealText: qsTr("Reveal in Finder")
}
