// A scrubber over the frames of the entire clip. Without frames it is an empty area that can't be
// focused.
//   review: ReviewScreenState
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Review

Item {
    id: strip

    required property ReviewScreenState review
    readonly property FilmstripLoader filmstrip: review.filmstrip

    implicitHeight: Theme.filmstripHeight

    ScrubTrack {
        id: track

        objectName: "filmstrip"
        anchors.fill: parent
        visible: strip.filmstrip.showsStrip
        name: qsTr("Filmstrip")
        value: strip.review.transport.clipTime
        valueText: strip.filmstrip.placeholderText
        maximumValue: strip.review.transport.clipDuration
        onScrubbed: x => strip.review.transport.scrubFilmstrip(x, width)
        onStepped: frames => strip.review.transport.stepFrames(frames)

        Rectangle {
            anchors.fill: parent
            radius: Theme.thumbnailRadius
            color: Theme.windowBackground
        }

        Row {
            id: frames

            anchors.fill: parent
            clip: true

            Repeater {
                id: pictures

                model: strip.filmstrip.filmstripURLs

                JpegImage {
                    required property string modelData

                    objectName: "filmstrip.frame"
                    width: frames.width / pictures.count
                    height: frames.height
                    path: modelData
                }
            }
        }

        Label {
            objectName: "filmstrip.generating"
            anchors.centerIn: parent
            visible: text !== ""
            text: strip.filmstrip.placeholderText
            textStyle: Theme.listStyle
            opacity: Theme.generatingOpacity
        }
    }
}
