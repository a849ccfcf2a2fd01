// The mark of an in or out point: a bracket that opens towards the range.
//   isIn: bool; fraction: real, 0 to 1 of the parent's width, or undefined for no mark
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit

Rectangle {
    id: bracket

    required property bool isIn
    property var fraction

    x: (fraction ?? 0) * parent.width - width / 2
    anchors.verticalCenter: parent.verticalCenter
    visible: fraction !== undefined
    width: Theme.bracketWidth
    height: Theme.bracketHeight
    radius: Theme.hairline
    color: Theme.focusRing

    Repeater {
        model: 2

        Rectangle {
            required property int index

            x: bracket.isIn ? 0 : bracket.width - width
            y: index * (bracket.height - height)
            width: Theme.bracketFootWidth
            height: Theme.bracketFootHeight
            color: Theme.focusRing
        }
    }
}
