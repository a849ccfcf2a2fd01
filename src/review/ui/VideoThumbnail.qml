// A clip's or subclip's picture, or a panel with a glyph while there is none. The picture is read off
// the main thread and dropped with the item.
//   primaryURL: string (a path; empty for none), fallbackURL: string (shown where no file stands at the
//   primary one)
import QtQuick
import Corvane.Kit

Item {
    id: control

    property string primaryURL
    property string fallbackURL
    readonly property bool isLoaded: false

    implicitWidth: Theme.clipThumbWidth
    implicitHeight: Theme.clipThumbHeight
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        visible: !control.isLoaded
        radius: Theme.thumbnailRadius
        color: Theme.blank

        Icon {
            anchors.centerIn: parent
            symbol: "film"
            color: Theme.edge
        }
    }
}
