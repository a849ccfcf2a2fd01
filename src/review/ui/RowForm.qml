// Where the parts of a list's row stand, in pixels of the row: one for all rows of a kind, so that a
// row computes nothing by itself and the list knows each height before it makes a row.
//   paneWidth: int, without the line at its right
import QtQuick
import Corvane.Kit

QtObject {
    required property int paneWidth
    readonly property bool tight: paneWidth + Theme.hairline < Theme.sidePaneTight
    readonly property bool narrow: paneWidth + Theme.hairline < Theme.sidePaneNarrow
    readonly property int gap: tight ? Theme.s6 : Theme.s8
    readonly property int rightPadding: tight ? Theme.s8 : Theme.clipRowInset

    property bool isCard: false
    property bool hasStem: false
    property int height: Theme.clipRowHeight

    property int inset: Theme.clipRowInset
    property int thumbWidth: narrow ? Theme.narrowThumbWidth : Theme.clipThumbWidth
    property int thumbHeight: narrow ? Theme.narrowThumbHeight : Theme.clipThumbHeight
    property int thumbY: (height - thumbHeight) / 2

    property int textX: inset + thumbWidth + gap
    property int textY: (height - Theme.listName.line - Theme.detailsHeight - Theme.marksHeight) / 2
    property int textWidth: Math.max(0, paneWidth - textX - rightPadding)
    property int detailsY: textY + Theme.listName.line
    property var detailsType: Theme.small
    property int marksY: detailsY + Theme.detailsHeight
}
