// The run of an export.
//   sheet: ExportSheet
import Corvane.Delivery
import Corvane.Export

DeliveryRunningSheet {
    objectName: "export.running"
    title: qsTr("Exporting…")
}
