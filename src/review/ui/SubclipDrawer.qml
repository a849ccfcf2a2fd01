// The list of subclips below the player, with a header that opens and closes it.
//   review: ReviewScreenState
import QtQuick
import Corvane.Kit
import Corvane.Review

Rectangle {
    id: drawer

    required property ReviewScreenState review
    readonly property real listHeight: Math.round(Math.max(Theme.drawerListMinHeight,
        Math.min(Theme.drawerListMaxHeight, Theme.drawerListShare * Window.height)))
    property real openPart: review.panes.subclipDrawerOpen ? 1 : 0

    Behavior on openPart {
        NumberAnimation { duration: Theme.drawerDuration; easing.type: Easing.InOutQuad }
    }

    implicitHeight: edge.height + head.height
                    + Math.round(openPart * (listHeight + Theme.keyReminderHeight))
    clip: true
    color: Theme.windowBackground

    Divider {
        id: edge

        width: parent.width
    }

    ButtonBase {
        id: head

        objectName: "drawer.head"
        anchors.top: edge.bottom
        width: parent.width
        height: Theme.drawerHeaderHeight
        focusPolicy: Qt.TabFocus
        onClicked: drawer.review.panes.toggleSubclipDrawer()
        text: qsTr("Subclips") + " " + drawer.review.panes.subclipCountText
        Accessible.checkable: true
        Accessible.checked: drawer.review.panes.subclipDrawerOpen

        background: Item {
            FocusRing {
                anchors.margins: 0
                visible: head.visualFocus
            }
        }
        contentItem: Item {
            SubclipsHeading {
                x: Theme.regionPadding
                height: parent.height
                count: drawer.review.panes.subclipCountText
            }

            Icon {
                anchors.right: parent.right
                anchors.rightMargin: Theme.spacing12 - Theme.hairline
                anchors.verticalCenter: parent.verticalCenter
                symbol: drawer.review.panes.subclipDrawerGlyph
                color: head.hovered ? Theme.primaryText : Theme.secondaryText
            }
        }
    }

    SubclipListView {
        anchors.top: head.bottom
        width: parent.width
        visible: drawer.openPart > 0
        review: drawer.review
        showsHeader: false
        listHeight: drawer.listHeight
    }
}
