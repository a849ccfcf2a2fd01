// What an export delivered.
//   screen: ExportScreenState
import Corvane.Delivery
import Corvane.Export

DeliveryDoneSheet {
    objectName: "export.done"
    againText: qsTr("Export Again")
}
