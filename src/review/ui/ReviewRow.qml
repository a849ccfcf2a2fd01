// A clip or subclip in the list, arranged by a form. The list reuses rows, so they have no state of
// their own.
//   form: RowForm; focused: bool (current row of the focused list); signal pressed(): by a screen reader
import QtQuick
import Corvane.Kit
import Corvane.Review

RowBackground {
    id: row

    required property int index
    required property string rowId
    required property bool isSubclip
    required property bool isInline
    required property string name
    required property string time
    required property string details
    required property string description
    required property string rating
    required property bool favorite
    required property bool selectedForExport
    required property bool reviewed
    required property bool rejected
    required property bool hasHd
    required property bool isAudioOnly
    required property string subclipCount
    required property string thumbnail
    required property string fallbackThumbnail
    required property string thumbnailRoot
    required property bool isSelected
    required property bool isMarked
    property RowForm form
    property bool focused: false
    property bool pooled: false

    signal pressed()

    objectName: rowId
    height: form.height
    selected: isSelected || isMarked
    current: isSelected && !isSubclip
    ListView.onPooled: pooled = true
    ListView.onReused: pooled = false

    HelpText.text: nameText.truncated ? name : ""
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: description
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.focusable: true
    Accessible.focused: focused
    Accessible.onPressAction: pressed()

    Rectangle {
        x: Theme.subclipStemX
        width: Theme.subclipStemWidth
        height: parent.height
        visible: row.form.hasStem
        color: Theme.subclipStem
    }

    VideoThumbnail {
        objectName: "row.thumbnail"
        x: row.form.inset
        y: row.form.thumbY
        width: row.form.thumbWidth
        height: row.form.thumbHeight
        opacity: row.rejected ? Theme.rejectedOpacity : 1
        primaryURL: row.pooled ? "" : row.thumbnail
        fallbackURL: row.pooled ? "" : row.fallbackThumbnail
        isAudioOnly: row.isAudioOnly
        root: row.thumbnailRoot
    }

    Rectangle {
        x: row.form.inset + Theme.tickInset
        y: row.form.thumbY + Theme.tickInset
        width: Theme.tickSize
        height: Theme.tickSize
        visible: row.isMarked
        radius: width / 2
        color: Theme.accent

        Icon {
            anchors.centerIn: parent
            symbol: "checkmark"
            size: Theme.markIconSize
            color: Theme.accentText
        }
    }

    Label {
        id: nameText

        objectName: "row.name"
        x: row.form.textX
        y: row.form.textY
        width: row.form.textWidth - (timeText.visible ? timeText.width + Theme.spacing8 : 0)
        text: row.name
        textStyle: Theme.listNameStyle
        literal: true
        color: row.current ? Theme.playerClipName : row.rejected ? Theme.secondaryText : Theme.primaryText
        Accessible.ignored: true
    }

    Label {
        objectName: "row.details"
        x: row.form.textX
        y: row.form.detailsY
        width: row.form.textWidth
        visible: !row.form.isCard
        text: visible ? row.details : ""
        textStyle: row.form.detailsStyle
        muted: true
        Accessible.ignored: true
    }

    TabularLabel {
        id: timeText

        objectName: "row.time"
        x: row.form.textX + row.form.textWidth - width
        y: row.form.detailsY
        visible: row.form.isCard
        text: visible ? row.time : ""
        textStyle: row.form.detailsStyle
        muted: true
        Accessible.ignored: true
    }

    RowMarks {
        x: row.form.textX
        y: row.form.marksY
        tight: row.form.tight
        rating: row.rating
        favorite: row.favorite
        selectedForExport: row.selectedForExport
        reviewed: row.reviewed
        rejected: row.rejected
        hasHd: row.hasHd
    }

    Label {
        objectName: "row.subclipCount"
        x: row.form.textX + row.form.textWidth - width
        y: row.form.marksY
        visible: row.form.isCard
        text: visible ? row.subclipCount : ""
        textStyle: Theme.smallStyle
        muted: true
        Accessible.ignored: true
    }
}
