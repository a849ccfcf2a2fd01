// A glyph of the icon table in a square of its size.
//   symbol: string, as in IconTable; size: int; color
// Decoration for a reader of the screen: the control that holds it has the name.
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
