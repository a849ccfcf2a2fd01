// How much longer than its subclip a delivered one is.
//   screen: DeliveryScreenState; name: string, of the control
import QtQuick
import Corvane.Delivery

ChoiceRow {
    id: row

    required property DeliveryScreenState screen

    label: qsTr("Subclip handles")
    model: screen.handles
    currentIndex: screen.handle
    help: screen.handlesHelp
    onActivated: index => row.screen.chooseHandle(index)
}
