// The video of an engine on a black background, as large as fits.
//   engine: PlayerEngine; showsPicture: bool, false for the background only
import QtQuick
import Corvane.Kit
import Corvane.Review

Rectangle {
    id: view

    property alias engine: picture.engine
    property alias showsPicture: picture.visible

    objectName: "playerView"
    color: Theme.playerBackground
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Player")

    FrameItem {
        id: picture

        objectName: "picture"
        anchors.fill: parent
    }
}
