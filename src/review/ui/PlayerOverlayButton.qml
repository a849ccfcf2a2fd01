// The round play button in the center of the video.
//   isPlaying, isVisible: bool; signal toggle()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Button {
    id: button

    property bool isPlaying: false
    property bool isVisible: true

    signal toggle()

    objectName: "playerOverlayButton"
    visible: isVisible
    implicitWidth: Theme.overlayButtonSize
    implicitHeight: Theme.overlayButtonSize
    focusPolicy: Qt.NoFocus
    onClicked: toggle()

    Accessible.role: Accessible.Button
    Accessible.name: isPlaying ? qsTr("Pause") : qsTr("Play")
    Accessible.onPressAction: Buttons.click(button)

    background: Rectangle {
        radius: height / 2
        color: Theme.overlayBackground
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            symbol: button.isPlaying ? "pause.fill" : "play.fill"
            size: Theme.overlayIconSize
            color: Theme.overlayGlyph
        }
    }
}
