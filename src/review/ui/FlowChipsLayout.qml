// Facts as chips in a wrapping row.
//   facts: list of strings
// qmllint disable unqualified
import QtQuick

FlowLayout {
    id: chips

    property alias facts: repeater.model

    Repeater {
        id: repeater

        FactChip {
            required property string modelData

            text: modelData
            maximumWidth: chips.width
        }
    }
}
