// The results of an export.
//   sheet: ExportSheet
import Corvane.Delivery

DeliveryDoneSheet {
    objectName: "export.done"
    againText: qsTr("Export Again")
}
