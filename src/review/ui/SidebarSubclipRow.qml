// The layout of a subclip's row: below its clip, or in a list of subclips.
//   style: SidebarSubclipRow.InlineUnderParent | SidebarSubclipRow.Flat
import QtQuick
import Corvane.Kit

RowForm {
    enum Style { InlineUnderParent, Flat }

    property int style: SidebarSubclipRow.InlineUnderParent
    readonly property bool flat: style === SidebarSubclipRow.Flat

    hasStem: !flat
    inset: flat ? Theme.clipRowInset : Theme.inlineRowInset
    height: flat ? Theme.flatRowHeight : Theme.clipRowHeight
    thumbWidth: narrow ? Theme.narrowThumbnailWidth : flat ? Theme.flatThumbnailWidth : Theme.clipThumbnailWidth
    thumbHeight: narrow ? Theme.narrowThumbnailHeight : flat ? Theme.flatThumbnailHeight : Theme.clipThumbnailHeight
    detailsStyle: tight ? Theme.microStyle : Theme.smallStyle
}
