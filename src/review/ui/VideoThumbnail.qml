// A clip's or subclip's picture, or a panel with a glyph while there is none. The picture is read off
// the main thread and dropped with the item.
//   primaryURL: string (a path; empty for none), fallbackURL: string (shown where no file stands at the
//   primary one), glyphSize: int; isLoaded: bool, read-only
import QtQuick
import Corvane.Kit
import Corvane.Review

Item {
    id: control

    property string primaryURL
    property string fallbackURL
    property int glyphSize: Theme.iconSize
    readonly property alias isLoaded: still.isLoaded

    implicitWidth: Theme.clipThumbnailWidth
    implicitHeight: Theme.clipThumbnailHeight
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        visible: !control.isLoaded
        radius: Theme.thumbnailRadius
        color: Theme.missingThumbnail

        Icon {
            anchors.centerIn: parent
            symbol: "film"
            size: control.glyphSize
            color: Theme.disabledText
        }
    }

    StillImage {
        id: still

        anchors.fill: parent
        path: control.primaryURL
        fallbackPath: control.fallbackURL
        radius: Theme.thumbnailRadius
    }
}
