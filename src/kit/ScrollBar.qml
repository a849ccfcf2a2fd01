// A thin scroll bar over the content, visible while the content is larger than the view.
import QtQuick
import QtQuick.Templates as T

T.ScrollBar {
    id: control

    padding: Theme.scrollBarInset
    implicitWidth: Theme.scrollBarWidth + 2 * padding
    implicitHeight: Theme.scrollBarWidth + 2 * padding
    minimumSize: 0.05
    visible: policy !== T.ScrollBar.AlwaysOff && size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        implicitWidth: Theme.scrollBarWidth
        implicitHeight: Theme.scrollBarWidth
        radius: Theme.scrollBarWidth / 2
        color: control.pressed || control.hovered ? Theme.controlBorder : Theme.track
    }
}
