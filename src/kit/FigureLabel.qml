// Numbers and times in figures of one width, in one line. For a running time and for columns.
//   text: string; type: Theme.body, ...; color; muted: bool (t2); rightAligned: bool
import QtQuick
import Corvane.Kit

FigureText {
    property var type: Theme.body
    property bool muted: false

    implicitHeight: type.line
    font: type.font
    color: muted ? Theme.t2 : Theme.t1
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
