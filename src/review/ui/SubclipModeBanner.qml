// Shows over the player that playback is limited to a subclip.
//   review: ReviewScreenState; maximumWidth: real; the name is elided to fit
import QtQuick
import Corvane.Kit
import Corvane.Review

BorderedPanel {
    id: banner

    required property ReviewScreenState review
    property real maximumWidth: Infinity
    readonly property real aside: scissors.width + mode.width + divider.width + hint.width + close.width
                                  + 5 * row.spacing + row.x + Theme.spacing2

    objectName: "subclipBanner"
    visible: review.selection.isInSubclipMode
    width: aside + name.width
    height: Theme.bannerHeight
    radius: Theme.controlRadius
    Accessible.role: Accessible.Grouping
    Accessible.name: mode.text

    Row {
        id: row

        x: Theme.spacing12 - Theme.hairline
        height: parent.height
        spacing: Theme.spacing8

        Icon {
            id: scissors

            anchors.verticalCenter: parent.verticalCenter
            symbol: "scissors"
            size: Theme.buttonIconSize
            color: Theme.accent
        }

        Label {
            id: mode

            anchors.verticalCenter: parent.verticalCenter
            width: Math.ceil(implicitWidth)
            text: qsTr("Subclip mode")
            textStyle: Theme.listHeadingStyle
        }

        Rectangle {
            id: divider

            anchors.verticalCenter: parent.verticalCenter
            width: Theme.hairline
            height: Theme.bannerDividerHeight
            color: Theme.fieldBorder
        }

        Label {
            id: name

            objectName: "subclipBanner.name"
            anchors.verticalCenter: parent.verticalCenter
            width: Math.max(0, Math.floor(Math.min(Math.ceil(implicitWidth), banner.maximumWidth - banner.aside)))
            text: banner.review.selection.activeSubclipName
            textStyle: Theme.listStyle
            literal: true
            HelpText.text: truncated ? text : ""
        }

        Label {
            id: hint

            anchors.verticalCenter: parent.verticalCenter
            width: Math.ceil(implicitWidth)
            text: qsTr("Esc to exit")
            textStyle: Theme.listStyle
            muted: true
        }

        PaneButton {
            id: close

            objectName: "subclipBanner.close"
            anchors.verticalCenter: parent.verticalCenter
            symbol: "xmark"
            iconSize: Theme.buttonIconSize
            helpText: qsTr("Exit subclip mode")
            onClicked: {
                focus = false; // the banner is about to be hidden
                banner.review.selection.exitSubclipMode();
            }
        }
    }
}
