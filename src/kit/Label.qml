// Text in one of the theme's styles, vertically centered in lines of the style's height. Wraps if
// `wrapMode` is set. Otherwise it elides at the right and shows one line, because names may contain
// line breaks, unless `maximumLineCount` is set.
//   textStyle: Theme.bodyStyle, Theme.listStyle, ...; color; muted: bool (secondary text color);
//   literal: bool (a name or a path: every character as it is, elided in the middle)
import QtQuick

Text {
    id: label

    property var textStyle: Theme.bodyStyle
    property bool muted: false
    property bool literal: false
    readonly property bool wraps: wrapMode !== Text.NoWrap

    color: muted ? Theme.secondaryText : Theme.primaryText
    font: literal ? textStyle.literalFont : textStyle.font
    elide: wraps ? Text.ElideNone : literal ? Text.ElideMiddle : Text.ElideRight
    textFormat: Text.PlainText
    maximumLineCount: wraps ? 0x7fffffff : 1
    lineHeightMode: wraps ? Text.FixedHeight : Text.ProportionalHeight
    lineHeight: wraps ? textStyle.lineHeight : 1
    topPadding: textStyle.leading
    bottomPadding: wraps ? -textStyle.leading : textStyle.leading
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
