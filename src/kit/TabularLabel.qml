// Numbers and times in figures of one width, in one line. For a running time and for columns.
//   text: string; textStyle: Theme.bodyStyle, ...; color; muted: bool (t2); rightAligned: bool
import QtQuick
import Corvane.Kit

TabularText {
    property var textStyle: Theme.bodyStyle
    property bool muted: false

    implicitHeight: textStyle.lineHeight
    font: textStyle.font
    color: muted ? Theme.secondaryText : Theme.primaryText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
