// A line between groups of menu items.
import QtQuick
import QtQuick.Templates as T

T.MenuSeparator {
    topPadding: Theme.spacing4
    bottomPadding: Theme.spacing4
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    implicitWidth: implicitContentWidth
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitHeight: Theme.hairline
        color: Theme.panelBorder
    }
}
