// A labelled segmented choice with a line of help.
//   label: string; model: list of strings; currentIndex: int; help: string; name: string, of the
//   control; signal activated(int index)
import QtQuick
import Corvane.Kit

LabelledRow {
    id: row

    property alias model: choice.model
    property alias currentIndex: choice.currentIndex
    property alias name: choice.objectName

    signal activated(int index)

    SegmentedChoice {
        id: choice

        name: row.label
        onActivated: index => row.activated(index)
    }
}
