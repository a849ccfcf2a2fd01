// The subclips of the clip in the player, or a hint about the keys for creating them.
//   review: ReviewScreenState; showsHeader: bool; listHeight: real
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Review

Column {
    id: view

    required property ReviewScreenState review
    property bool showsHeader: true
    property real listHeight: Theme.drawerListMaxHeight

    SubclipsHeading {
        x: Theme.regionPadding
        height: Theme.drawerHeaderHeight
        visible: view.showsHeader
        count: view.review.panes.subclipCountText
    }

    ScrollingList {
        id: list

        // Scrolls to the control that gets the focus.
        function follow(item: Item) {
            while (item && item.parent !== contentItem) {
                item = item.parent;
            }
            const row = item as SubclipRow;
            if (row) {
                positionViewAtIndex(row.index, ListView.Contain);
            }
        }

        objectName: "drawer.list"
        width: parent.width
        height: view.listHeight
        model: view.review.subclips
        name: qsTr("Subclips")

        Connections {
            target: list.Window.window

            function onActiveFocusItemChanged() {
                if (list.activeFocus) {
                    list.follow(list.Window.activeFocusItem);
                }
            }
        }

        delegate: SubclipRow {
            width: ListView.view.width
            review: view.review
            onEditingEnded: ListView.view.focus = false
        }

        Label {
            objectName: "drawer.none"
            x: Theme.regionPadding
            y: Theme.spacing12
            width: parent.width - 2 * x
            visible: list.count === 0
            text: qsTr("Press i / o while playing to mark in/out, then Enter to save.")
            muted: true
            wrapMode: Text.Wrap
        }
    }

    Label {
        objectName: "drawer.keys"
        width: parent.width
        height: Theme.keyReminderHeight
        leftPadding: Theme.regionPadding
        rightPadding: Theme.regionPadding
        verticalAlignment: Text.AlignVCenter
        text: qsTr("i = in · o = out · Enter = save · Esc = clear · [ ] = jump to range edges · Shift+i / Shift+o = nudge one frame")
        textStyle: Theme.smallStyle
        muted: true
        HelpText.text: truncated ? text : ""
    }
}
