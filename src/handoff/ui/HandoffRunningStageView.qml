// The run of a handoff.
//   screen: HandoffScreenState
import Corvane.Export

DeliveryRunningSheet {
    objectName: "handoff.running"
    title: qsTr("Generating handoff package…")
}
