// What an export delivered.
//   sheet: ExportSheet
import Corvane.Delivery
import Corvane.Export

DeliveryDoneSheet {
    objectName: "export.done"
    againText: qsTr("Export Again")
}
