// The text of a control. Screen readers skip it: the control has the accessible name.
import QtQuick

Text {
    verticalAlignment: Text.AlignVCenter
    textFormat: Text.PlainText
    Accessible.ignored: true
}
