// A count of a finished run over what it counts.
//   count: int; label: string; ink: color of a count that isn't zero
import QtQuick
import Corvane.Kit

Rectangle {
    id: box

    property int count: 0
    property string label
    property color ink: Theme.t1

    height: column.height + 2 * Theme.resultCountPadding
    radius: Theme.panelRadius
    color: Theme.b3
    Accessible.role: Accessible.StaticText
    Accessible.name: label + ": " + count

    Column {
        id: column

        x: Theme.resultGap
        y: Theme.resultCountPadding
        width: parent.width - 2 * x

        FigureLabel {
            text: box.count
            type: Theme.title
            color: box.count > 0 ? box.ink : Theme.t2
            Accessible.ignored: true
        }
        Label {
            text: box.label
            type: Theme.list
            muted: true
            Accessible.ignored: true
        }
    }
}
