// The progress of a handoff.
//   sheet: HandoffSheet
import Corvane.Delivery

DeliveryRunningSheet {
    objectName: "handoff.running"
    title: qsTr("Generating handoff package…")
}
