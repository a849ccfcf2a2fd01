// What an export delivered.
//   sheet: ExportSheet
import Corvane.Delivery

DeliveryDoneSheet {
    objectName: "export.done"
    againText: qsTr("Export Again")
}
