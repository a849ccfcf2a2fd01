// Text of one of the theme's types, in the middle of lines of that type's height. Elides at the
// right unless told otherwise; with `wrapMode` set it wraps, else it shows one line unless
// `maximumLineCount` is set: names can hold line breaks.
//   type: Theme.body, Theme.list, ...; color; muted: bool (t2)
import QtQuick

Text {
    id: label

    property var type: Theme.body
    property bool muted: false
    readonly property bool wraps: wrapMode !== Text.NoWrap

    color: muted ? Theme.t2 : Theme.t1
    font: type.font
    elide: wraps ? Text.ElideNone : Text.ElideRight
    textFormat: Text.PlainText
    maximumLineCount: wraps ? 0x7fffffff : 1
    lineHeightMode: wraps ? Text.FixedHeight : Text.ProportionalHeight
    lineHeight: wraps ? type.line : 1
    topPadding: type.lead
    bottomPadding: wraps ? -type.lead : type.lead
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
