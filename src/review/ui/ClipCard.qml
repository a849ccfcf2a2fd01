// The form of a clip with a large thumbnail: the picture as wide as the pane, name and time below it,
// marks and the count of subclips below those.
import QtQuick
import Corvane.Kit

RowForm {
    isCard: true
    inset: Theme.regionPadding
    thumbWidth: Math.max(0, paneWidth - 2 * inset)
    thumbHeight: Math.round(thumbWidth / Theme.cardShape)
    thumbY: Theme.cardTop
    textX: inset
    textY: thumbY + thumbHeight + Theme.s6
    textWidth: thumbWidth
    detailsY: textY
    detailsType: Theme.list
    marksY: textY + Theme.list.line + Theme.s2
    height: marksY + Theme.list.line + Theme.cardBottom
}
