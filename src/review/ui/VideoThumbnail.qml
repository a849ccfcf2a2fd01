// The thumbnail of a clip or subclip, or a glyph if it can't be loaded.
//   primaryURL, fallbackURL: string (paths, may be empty; the fallback is used if the first file
//   doesn't exist); root: string, as for JpegImage; isAudioOnly: bool (the glyph is one for audio);
//   isLoaded: bool, read-only
import QtQuick
import Corvane.Kit
import Corvane.Review

Item {
    id: control

    property string primaryURL
    property string fallbackURL
    property bool isAudioOnly: false
    property string root
    readonly property alias isLoaded: image.isLoaded

    implicitWidth: Theme.clipThumbnailWidth
    implicitHeight: Theme.clipThumbnailHeight
    Accessible.ignored: true

    Rectangle {
        anchors.fill: parent
        visible: !control.isLoaded
        radius: Theme.thumbnailRadius
        color: Theme.missingThumbnail

        Icon {
            objectName: "thumbnail.glyph"
            anchors.centerIn: parent
            symbol: control.isAudioOnly ? "waveform" : "film"
            size: Theme.iconSize
            color: Theme.disabledText
        }
    }

    JpegImage {
        id: image

        anchors.fill: parent
        path: control.primaryURL
        fallbackPath: control.fallbackURL
        root: control.root
        radius: Theme.thumbnailRadius
    }
}
