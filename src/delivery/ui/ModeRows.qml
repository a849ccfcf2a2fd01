// The choices of mode and output.
//   sheet: DeliverySheet; name: string, of the items: "<name>.mode" and "<name>.output"
import QtQuick
import Corvane.Kit
import Corvane.Delivery

Column {
    id: rows

    required property DeliverySheet sheet
    property string name

    width: parent ? parent.width : 0
    spacing: Theme.formGap

    ChoiceRow {
        name: rows.name + ".mode"
        label: qsTr("Mode")
        model: rows.sheet.mode.labels
        currentIndex: rows.sheet.mode.index
        help: rows.sheet.mode.help
        onActivated: index => rows.sheet.chooseMode(index)
    }
    ChoiceRow {
        name: rows.name + ".output"
        label: qsTr("Output")
        model: rows.sheet.output.labels
        currentIndex: rows.sheet.output.index
        help: rows.sheet.output.help
        onActivated: index => rows.sheet.chooseOutput(index)
    }
}
