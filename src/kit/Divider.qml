// A line between regions: horizontal, or vertical with `vertical`.
import QtQuick

Rectangle {
    property bool vertical: false

    implicitWidth: Theme.hairline
    implicitHeight: Theme.hairline
    color: Theme.divider
}
