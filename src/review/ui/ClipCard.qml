// The layout of a clip's row with a large thumbnail: name and time below the thumbnail, marks and the
// number of subclips below those.
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
