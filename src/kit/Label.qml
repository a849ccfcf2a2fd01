// Text of one of the theme's types, in the middle of lines of that type's height. Elides at the
// right unless told otherwise; with `wrapMode` set it wraps, else it shows one line unless
// `maximumLineCount` is set: names can hold line breaks.
//   textStyle: Theme.bodyStyle, Theme.listStyle, ...; color; muted: bool (t2)
import QtQuick

Text {
    id: label

    property var textStyle: Theme.bodyStyle
    property bool muted: false
    readonly property bool wraps: wrapMode !== Text.NoWrap

    color: muted ? Theme.secondaryText : Theme.primaryText
    font: textStyle.font
    elide: wraps ? Text.ElideNone : Text.ElideRight
    textFormat: Text.PlainText
    maximumLineCount: wraps ? 0x7fffffff : 1
    lineHeightMode: wraps ? Text.FixedHeight : Text.ProportionalHeight
    lineHeight: wraps ? textStyle.lineHeight : 1
    topPadding: textStyle.leading
    bottomPadding: wraps ? -textStyle.leading : textStyle.leading
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
