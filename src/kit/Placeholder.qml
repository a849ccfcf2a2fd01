// The placeholder of an empty text field.
//   field: TextField or TextArea
import QtQuick

ControlText {
    required property var field

    x: field.leftPadding
    y: field.topPadding
    width: field.width - field.leftPadding - field.rightPadding
    visible: field.length === 0 && field.preeditText === ""
    text: field.placeholderText
    font: field.font
    color: field.placeholderTextColor
    elide: Text.ElideRight
}
