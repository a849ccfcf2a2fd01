// The progress of an export.
//   sheet: ExportSheet
import Corvane.Delivery

DeliveryRunningSheet {
    objectName: "export.running"
    title: qsTr("Exporting…")
}
