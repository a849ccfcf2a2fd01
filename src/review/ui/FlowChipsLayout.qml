// Facts as chips, one after another and in as many rows as they need.
//   facts: list of strings
// Qt 6.4 has no way to say that a delegate knows what surrounds it.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Review

FlowLayout {
    id: chips

    property alias facts: repeater.model

    spacing: Theme.chipGap

    Repeater {
        id: repeater

        FactChip {
            required property string modelData

            text: modelData
            maximumWidth: chips.width
        }
    }
}
