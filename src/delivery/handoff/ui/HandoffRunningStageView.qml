// The run of a handoff.
//   screen: HandoffScreenState
import Corvane.Delivery

DeliveryRunningSheet {
    objectName: "handoff.running"
    title: qsTr("Generating handoff package…")
}
