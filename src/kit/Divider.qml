// A line between regions. The owner sets its width or its height.
import QtQuick

Rectangle {
    implicitWidth: Theme.hairline
    implicitHeight: Theme.hairline
    color: Theme.divider
}
