// A line between regions, horizontal by default.
//   vertical: bool
import QtQuick

Rectangle {
    property bool vertical: false

    implicitWidth: Theme.hairline
    implicitHeight: Theme.hairline
    color: Theme.divider
}
