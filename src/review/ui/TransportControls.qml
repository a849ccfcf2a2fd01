// Steps, play and the time. The play button stands in the middle; the time is right of it.
//   review: ReviewScreenState
import QtQuick
import Corvane.Kit
import Corvane.Review

Item {
    id: transport

    required property ReviewScreenState review

    implicitHeight: Theme.transportHeight

    Button {
        objectName: "transport.back"
        anchors.right: play.left
        anchors.rightMargin: Theme.spacing6
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.transportButtonSize
        height: Theme.transportButtonSize
        symbol: "backward.frame.fill"
        iconSize: Theme.transportIconSize
        glyphColor: Theme.primaryText
        helpText: qsTr("Step one frame back (,)")
        focusPolicy: Qt.TabFocus
        onClicked: transport.review.stepFrames(-1)
    }

    Button {
        id: play

        objectName: "transport.play"
        anchors.centerIn: parent
        width: Theme.playButtonWidth
        height: Theme.transportButtonSize
        kind: Button.Plain
        symbol: transport.review.isPlaying ? "pause.fill" : "play.fill"
        iconSize: Theme.playIconSize
        glyphColor: Theme.primaryText
        helpText: transport.review.playHelp
        focusPolicy: Qt.TabFocus
        onClicked: transport.review.togglePlayback()
    }

    Button {
        objectName: "transport.forward"
        anchors.left: play.right
        anchors.leftMargin: Theme.spacing6
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.transportButtonSize
        height: Theme.transportButtonSize
        symbol: "forward.frame.fill"
        iconSize: Theme.transportIconSize
        glyphColor: Theme.primaryText
        helpText: qsTr("Step one frame forward (.)")
        focusPolicy: Qt.TabFocus
        onClicked: transport.review.stepFrames(1)
    }

    Row {
        objectName: "transport.time"
        x: Math.round(parent.width / 2) + Theme.transportTimeOffset
        anchors.verticalCenter: parent.verticalCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: transport.review.transportText

        TabularLabel {
            objectName: "transport.current"
            text: transport.review.transportTimeText
            textStyle: Theme.headingStyle
            Accessible.ignored: true
        }

        TabularLabel {
            text: transport.review.transportDurationText
            textStyle: Theme.headingPlainStyle
            muted: true
            Accessible.ignored: true
        }
    }
}
