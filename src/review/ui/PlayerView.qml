// The picture of an engine on a black ground, whole and as large as fits.
//   engine: PlayerEngine; showsPicture: bool, else only the ground
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

    PictureItem {
        id: picture

        objectName: "picture"
        anchors.fill: parent
    }
}
