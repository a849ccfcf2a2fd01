// Buttons to step and play, and the time.
import QtQuick
import Corvane.Kit
import Corvane.Review

Item {
    id: controls

    required property ReviewTransport transport

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
        onClicked: controls.transport.stepFrames(-1)
    }

    Button {
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
        focusPolicy: Qt.TabFocus
        onClicked: controls.transport.togglePlayback()
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
