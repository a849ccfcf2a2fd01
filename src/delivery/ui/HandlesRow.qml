// The choice of the handles of subclips.
//   sheet: DeliverySheet; name: string, of the control
import QtQuick
import Corvane.Delivery

ChoiceRow {
    id: row

    required property DeliverySheet sheet

    label: qsTr("Subclip handles")
    model: sheet.handles.labels
    currentIndex: sheet.handles.index
    help: sheet.handles.help
    onActivated: index => row.sheet.chooseHandle(index)
}
