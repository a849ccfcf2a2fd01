// What a handoff made.
//   screen: HandoffScreenState
import Corvane.Delivery

DeliveryDoneSheet {
    objectName: "handoff.done"
    againText: qsTr("Hand Off Again")
    placeSymbol: "shippingbox.fill"
    revealText: qsTr("Reveal in Finder")
}
