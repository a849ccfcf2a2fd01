// The run of an export.
//   screen: ExportScreenState
import Corvane.Delivery
import Corvane.Export

DeliveryRunningSheet {
    objectName: "export.running"
    title: qsTr("Exporting…")
}
