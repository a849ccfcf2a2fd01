// A single line of numbers or times in tabular figures, for columns and running times.
//   text: string; textStyle: Theme.bodyStyle, ...; color; muted: bool (secondary text color);
//   rightAligned: bool
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
