// The form of a clip with a large thumbnail: the picture as wide as the pane, name and time below it,
// marks and the count of subclips below those.
import QtQuick
import Corvane.Kit

RowForm {
    isCard: true
    inset: Theme.regionPadding
    thumbWidth: Math.max(0, paneWidth - 2 * inset)
    thumbHeight: Math.round(thumbWidth / Theme.cardAspectRatio)
    thumbY: Theme.cardTopPadding
    textX: inset
    textY: thumbY + thumbHeight + Theme.spacing6
    textWidth: thumbWidth
    detailsY: textY
    detailsStyle: Theme.listStyle
    marksY: textY + Theme.listStyle.lineHeight + Theme.spacing2
    height: marksY + Theme.listStyle.lineHeight + Theme.cardBottomPadding
}
