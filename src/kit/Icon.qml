// A symbol of the icon table in a square. Screen readers skip it: the control around it has the
// name.
//   symbol: string, a name in IconTable; size: int; color
import QtQuick
import Corvane.Kit

Text {
    property string symbol
    property int size: Theme.iconSize

    width: size
    height: size
    text: IconTable.glyph(symbol)
    color: Theme.secondaryText
    font.family: IconTable.family
    font.pixelSize: size
    horizontalAlignment: Text.AlignHCenter
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true
}
