// How clips are delivered and which outputs they have.
//   screen: DeliveryScreenState; name: string, of the items: "<name>.mode" and "<name>.output"
import QtQuick
import Corvane.Kit
import Corvane.Delivery

Column {
    id: rows

    required property DeliveryScreenState screen
    property string name

    width: parent ? parent.width : 0
    spacing: Theme.formGap

    ChoiceRow {
        name: rows.name + ".mode"
        label: qsTr("Mode")
        model: rows.screen.modes
        currentIndex: rows.screen.mode
        help: rows.screen.modeHelp
        onActivated: index => rows.screen.chooseMode(index)
    }
    ChoiceRow {
        name: rows.name + ".output"
        label: qsTr("Output")
        model: rows.screen.outputs
        currentIndex: rows.screen.output
        help: rows.screen.outputHelp
        onActivated: index => rows.screen.chooseOutput(index)
    }
}
