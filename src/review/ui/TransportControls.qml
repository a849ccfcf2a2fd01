// Buttons to step and play, and the time.
import QtQuick
import Corvane.Kit
import Corvane.Review

Item {
    id: controls

    required property ReviewTransport transport

    implicitHeight: Theme.transportHeight

    component StepButton: PaneButton {
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.transportButtonSize
        height: Theme.transportButtonSize
        iconSize: Theme.transportIconSize
        glyphColor: Theme.primaryText
    }

    StepButton {
        objectName: "transport.back"
        anchors.right: play.left
        anchors.rightMargin: Theme.spacing6
        symbol: "backward.frame.fill"
        helpText: qsTr("Step one frame back (,)")
        onClicked: controls.transport.stepFrames(-1)
    }

    PaneButton {
        id: play

        objectName: "transport.play"
        anchors.centerIn: parent
        width: Theme.playButtonWidth
        height: Theme.transportButtonSize
        kind: Button.Plain
        symbol: controls.transport.isPlaying ? "pause.fill" : "play.fill"
        iconSize: Theme.playIconSize
        glyphColor: Theme.primaryText
        helpText: controls.transport.playHelp
        onClicked: controls.transport.togglePlayback()
    }

    StepButton {
        objectName: "transport.forward"
        anchors.left: play.right
        anchors.leftMargin: Theme.spacing6
        symbol: "forward.frame.fill"
        helpText: qsTr("Step one frame forward (.)")
        onClicked: controls.transport.stepFrames(1)
    }

    Row {
        objectName: "transport.time"
        x: Math.round(parent.width / 2) + Theme.transportTimeOffset
        anchors.verticalCenter: parent.verticalCenter
        Accessible.role: Accessible.StaticText
        Accessible.name: controls.transport.transportText

        TabularLabel {
            objectName: "transport.current"
            text: controls.transport.transportTimeText
            textStyle: Theme.headingStyle
            Accessible.ignored: true
        }

        TabularLabel {
            text: controls.transport.transportDurationText
            textStyle: Theme.headingPlainStyle
            muted: true
            Accessible.ignored: true
        }
    }
}
