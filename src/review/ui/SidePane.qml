// The left pane of the review screen: the list of clips, or the inspector of the selected clip.
//   review: ReviewScreenState; inspectorSource: url of the inspector, which has a property `inspector`
import QtQuick
import Corvane.Kit
import Corvane.Review

Rectangle {
    id: pane

    required property ReviewScreenState review
    property url inspectorSource: Qt.resolvedUrl("InspectorView.qml")
    // Transition from the list (0) to the inspector (1).
    property real swap: review.panes.showsInspector ? 1 : 0

    implicitWidth: Theme.sidePaneWidth
    color: Theme.windowBackground
    Accessible.role: Accessible.Pane
    Accessible.name: review.panes.showsInspector ? review.inspector.title : list.Accessible.name

    Behavior on swap {
        NumberAnimation { duration: Theme.paneSwapDuration; easing.type: Easing.InOutQuad }
    }

    Item {
        id: top

        width: parent.width
        height: Theme.listHeaderHeight

        Switch {
            objectName: "sidePane.largeThumbnails"
            anchors.left: parent.left
            anchors.leftMargin: Theme.regionPadding
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, info.x - x - Theme.spacing8)
            visible: !pane.review.panes.showsInspector
            focusPolicy: Qt.TabFocus
            text: qsTr("Large thumbnails")
            helpText: qsTr("Switch to full-width thumbnail-on-top cards (default: compact rows).")
            checked: pane.review.filterBar.useLargeThumbnails
            onToggled: pane.review.filterBar.useLargeThumbnails = checked
        }

        Label {
            objectName: "sidePane.title"
            anchors.left: parent.left
            anchors.leftMargin: Theme.regionPadding
            anchors.right: info.left
            anchors.rightMargin: Theme.spacing8
            anchors.verticalCenter: parent.verticalCenter
            visible: pane.review.panes.showsInspector
            text: pane.review.inspector.title
            textStyle: Theme.listHeadingStyle
            literal: true
            HelpText.text: truncated ? text : ""
        }

        PaneButton {
            id: info

            objectName: "sidePane.info"
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacing4
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.infoButtonSize
            height: Theme.infoButtonSize
            enabled: pane.review.selection.hasSelectedVideo
            symbol: pane.review.panes.inspectorGlyph
            iconSize: pane.review.panes.showsInspector ? Theme.iconSize : Theme.buttonIconSize
            helpText: pane.review.panes.inspectorHelp
            onClicked: pane.review.panes.toggleInspector()
        }

        Divider {
            anchors.bottom: parent.bottom
            width: parent.width
        }
    }

    Item {
        anchors.top: top.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        clip: true

        ReviewList {
            id: list

            anchors.fill: parent
            visible: pane.swap < 1
            enabled: !pane.review.panes.showsInspector
            opacity: 1 - pane.swap
            review: pane.review
        }

        Column {
            y: Theme.noMatchesTopMargin
            x: Theme.spacing24
            width: parent.width - 2 * x
            spacing: Theme.spacing12
            visible: pane.review.showsNoMatches && !pane.review.panes.showsInspector

            Label {
                objectName: "sidePane.noMatches"
                width: parent.width
                text: qsTr("No clips match the current filters")
                muted: true
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignHCenter
            }

            PaneButton {
                objectName: "sidePane.clearFilters"
                anchors.horizontalCenter: parent.horizontalCenter
                text: qsTr("Clear filters")
                onClicked: {
                    const hadFocus = activeFocus;
                    pane.review.filterBar.clearFilters();
                    if (hadFocus) {
                        list.forceActiveFocus(Qt.TabFocusReason);
                    }
                }
            }
        }

        Loader {
            id: inspectorLoader

            readonly property bool isNeeded: pane.swap > 0 || pane.review.panes.showsInspector

            anchors.fill: parent
            opacity: pane.swap
            enabled: pane.review.panes.showsInspector
            onIsNeededChanged: isNeeded ? setSource(pane.inspectorSource, { inspector: pane.review.inspector })
                                        : setSource("")
            Component.onCompleted: isNeededChanged()
        }
    }
}
