// The scrubber with the draft marks. Covers the clip, or the active subclip in subclip mode. During
// playback only the played part and the knob change.
//   review: ReviewScreenState
import QtQuick
import Corvane.Kit
import Corvane.Review

ScrubTrack {
    id: scrubber

    required property ReviewScreenState review

    objectName: "scrubber"
    implicitHeight: Theme.scrubberHeight
    name: qsTr("Scrubber")
    value: review.transport.transportTime
    valueText: review.transport.transportText
    maximumValue: review.transport.transportDuration
    onScrubbed: x => review.transport.scrub(x, width)
    onStepped: frames => review.transport.stepFrames(frames)

    Rectangle {
        readonly property bool hasBothDrafts: scrubber.review.marking.draftInFraction !== undefined
                                        && scrubber.review.marking.draftOutFraction !== undefined
        readonly property real from: hasBothDrafts ? scrubber.review.marking.draftInFraction : 0
        readonly property real to: hasBothDrafts ? scrubber.review.marking.draftOutFraction : 0

        objectName: "scrubber.range"
        x: Math.min(from, to) * parent.width
        anchors.verticalCenter: parent.verticalCenter
        visible: hasBothDrafts
        width: Math.abs(to - from) * parent.width
        height: Theme.bracketHeight
        color: Theme.markedRange
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: parent.width
        height: Theme.trackHeight
        radius: height / 2
        color: Theme.track
    }

    Rectangle {
        objectName: "scrubber.played"
        anchors.verticalCenter: parent.verticalCenter
        visible: scrubber.review.transport.showsPlayhead
        width: scrubber.review.transport.playedFraction * parent.width
        height: Theme.trackHeight
        radius: height / 2
        color: Theme.accent
    }

    ScrubberBracket {
        objectName: "scrubber.in"
        isIn: true
        fraction: scrubber.review.marking.draftInFraction
    }

    ScrubberBracket {
        objectName: "scrubber.out"
        isIn: false
        fraction: scrubber.review.marking.draftOutFraction
    }

    Rectangle {
        objectName: "scrubber.knob"
        x: scrubber.review.transport.playedFraction * parent.width - width / 2
        anchors.verticalCenter: parent.verticalCenter
        visible: scrubber.review.transport.showsPlayhead
        width: Theme.scrubberKnobSize
        height: Theme.scrubberKnobSize
        radius: height / 2
        color: Theme.scrubberKnob

        Rectangle {
            z: -1
            anchors.fill: parent
            anchors.margins: -Theme.scrubberKnobHaloWidth
            visible: scrubber.hovered || scrubber.pressed
            radius: height / 2
            color: Theme.scrubberKnobHalo
        }
    }
}
