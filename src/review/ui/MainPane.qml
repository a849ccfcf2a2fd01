// The player with its controls and the subclips. The video takes the remaining height.
//   review: ReviewScreenState; engine: PlayerEngine
import QtQuick
import Corvane.Kit
import Corvane.Review

Rectangle {
    id: pane

    required property ReviewScreenState review
    required property PlayerEngine engine

    objectName: "mainPane"
    implicitWidth: Theme.mainPaneMinWidth
    color: Theme.panelBackground
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Player")

    Item {
        id: player

        objectName: "player"
        anchors.top: parent.top
        anchors.bottom: under.top
        width: parent.width
        clip: true

        PlayerView {
            anchors.fill: parent
            engine: pane.engine
            showsPicture: pane.review.selection.hasSelectedVideo
        }

        Icon {
            objectName: "player.audio"
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: parent.verticalCenter
            anchors.bottomMargin: Theme.overlayButtonSize / 2 + Theme.spacing12
            visible: pane.review.selection.isAudioOnly
            symbol: "waveform"
            size: Theme.audioIconSize
            color: Theme.disabledText
        }

        HoverHandler {
            onHoveredChanged: pane.review.transport.hoveringPlayer = hovered
        }

        PlayerOverlayButton {
            anchors.centerIn: parent
            isPlaying: pane.review.transport.isPlaying
            isVisible: pane.review.selection.hasSelectedVideo && pane.review.transport.overlayButtonIsVisible
            onToggle: pane.review.transport.togglePlayback()
        }

        SubclipModeBanner {
            x: Math.round((parent.width - width) / 2)
            y: Theme.spacing12
            review: pane.review
            maximumWidth: parent.width - 2 * Theme.regionPadding
        }

        Label {
            objectName: "player.none"
            anchors.centerIn: parent
            visible: !pane.review.selection.hasSelectedVideo
            text: qsTr("Select a video to play")
            textStyle: Theme.headingPlainStyle
            muted: true
        }
    }

    Column {
        id: under

        anchors.bottom: parent.bottom
        width: parent.width
        height: visible ? implicitHeight : 0
        visible: pane.review.selection.hasSelectedVideo

        Column {
            x: Theme.regionPadding
            width: parent.width - 2 * x
            topPadding: Theme.spacing6
            spacing: Theme.spacing2

            ScrubberView {
                width: parent.width
                review: pane.review
            }

            FilmstripScrubberView {
                width: parent.width
                review: pane.review
            }

            Item { // keeps its height without bars, so that the video is not resized
                width: parent.width
                height: Theme.subclipBarsHeight

                SubclipBarsView {
                    anchors.fill: parent
                    visible: pane.review.panes.showsSubclipBars
                    review: pane.review
                }
            }
        }

        TransportControls {
            width: parent.width
            transport: pane.review.transport
        }

        SubclipDrawer {
            width: parent.width
            review: pane.review
        }
    }
}
