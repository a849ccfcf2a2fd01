// The layout of a row's parts, in pixels; by default that of a clip's compact row: the thumbnail on the
// left, three lines on the right. Shared by all rows of a kind: rows have no layout of their own, and
// the list knows their height in advance.
//   paneWidth: int, without the line on the right
import QtQuick
import Corvane.Kit

QtObject {
    required property int paneWidth
    readonly property bool tight: paneWidth + Theme.hairline < Theme.sidePaneTightWidth
    readonly property bool narrow: paneWidth + Theme.hairline < Theme.sidePaneNarrowWidth
    readonly property int gap: tight ? Theme.spacing6 : Theme.spacing8
    readonly property int rightPadding: tight ? Theme.spacing8 : Theme.clipRowInset

    property bool isCard: false
    property bool hasStem: false
    property int height: Theme.clipRowHeight

    property int inset: Theme.clipRowInset
    property int thumbWidth: narrow ? Theme.narrowThumbnailWidth : Theme.clipThumbnailWidth
    property int thumbHeight: narrow ? Theme.narrowThumbnailHeight : Theme.clipThumbnailHeight
    property int thumbY: (height - thumbHeight) / 2

    property int textX: inset + thumbWidth + gap
    property int textY: (height - Theme.listNameStyle.lineHeight - Theme.detailsHeight - Theme.marksHeight) / 2
    property int textWidth: Math.max(0, paneWidth - textX - rightPadding)
    property int detailsY: textY + Theme.listNameStyle.lineHeight
    property var detailsStyle: Theme.smallStyle
    property int marksY: detailsY + Theme.detailsHeight
}
