// A count of a finished run above its label.
//   count: int; label: string; countColor: color of a nonzero count
import QtQuick
import Corvane.Kit

Rectangle {
    id: box

    property int count: 0
    property string label
    property color countColor: Theme.primaryText

    height: column.height + 2 * Theme.resultCountPadding
    radius: Theme.panelRadius
    color: Theme.popupBackground
    Accessible.role: Accessible.StaticText
    Accessible.name: label + ": " + count

    Column {
        id: column

        x: Theme.resultGap
        y: Theme.resultCountPadding
        width: parent.width - 2 * x

        TabularLabel {
            text: box.count
            textStyle: Theme.titleStyle
            color: box.count > 0 ? box.countColor : Theme.secondaryText
            Accessible.ignored: true
        }
        Label {
            text: box.label
            textStyle: Theme.listStyle
            muted: true
            Accessible.ignored: true
        }
    }
}
