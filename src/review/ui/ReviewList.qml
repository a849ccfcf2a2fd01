// The rows of the side pane. A click on a row is the review's to answer. With the keyboard's focus,
// which it takes by Tab alone, Up, Down, Home, End, Page Up and Page Down move its current row, and
// Return and Space are a click on that; every other key is passed on.
//   review: the screen's state
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit
import Corvane.Review

ListView {
    id: list

    required property ReviewScreenState review
    readonly property bool wantsCards: review.filterBar.useLargeThumbnails
    property bool showsCards: false
    readonly property RowForm clipForm: showsCards ? card : compact
    readonly property int hoveredRow: pointer.hovered
        ? indexAt(0, contentY + mapFromItem(null, pointer.point.scenePosition).y) : -1

    objectName: "review.list"
    model: review.list
    clip: true
    reuseItems: true
    topMargin: Theme.spacing2
    bottomMargin: Theme.spacing2
    activeFocusOnTab: count > 0
    keyNavigationEnabled: false
    highlightFollowsCurrentItem: false
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: ScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: qsTr("Clips")

    function rowAt(y: real): int {
        return indexAt(0, Math.max(originY, Math.min(y, originY + contentHeight - 1)));
    }

    function isInView(item: Item): bool {
        return item !== null && item.y >= contentY && item.y + item.height <= contentY + height;
    }

    function moveTo(row: int) {
        if (row >= 0 && row < count) {
            currentIndex = row;
            positionViewAtIndex(row, ListView.Contain);
        }
    }

    // To the edge of the view first, and from there by a view.
    function movePage(direction: int) {
        const edge = () => rowAt(direction > 0 ? contentY + height - 1 : contentY);
        if (isInView(currentItem) && currentIndex !== edge()) {
            moveTo(edge());
            return;
        }
        positionViewAtIndex(edge(), direction > 0 ? ListView.Beginning : ListView.End);
        forceLayout();
        moveTo(edge());
    }

    function handleKey(event: var): bool {
        switch (event.key) {
        case Qt.Key_Up:
            moveTo(currentIndex - 1);
            return true;
        case Qt.Key_Down:
            moveTo(currentIndex + 1);
            return true;
        case Qt.Key_Home:
            moveTo(0);
            return true;
        case Qt.Key_End:
            moveTo(count - 1);
            return true;
        case Qt.Key_PageUp:
            movePage(-1);
            return true;
        case Qt.Key_PageDown:
            movePage(1);
            return true;
        case Qt.Key_Return:
        case Qt.Key_Enter:
        case Qt.Key_Space:
            if (!event.isAutoRepeat) {
                review.selection.clickRow(currentIndex, event.modifiers);
            }
            return true;
        default:
            return false;
        }
    }

    // The first clip in view stays at the top when rows become cards or cards rows.
    function takeForm() {
        if (showsCards !== wantsCards) {
            const top = rowAt(contentY + topMargin);
            const clip = review.list.clipRowFrom(top);
            const stays = itemAtIndex(clip) ? clip : top;
            showsCards = wantsCards;
            forceLayout();
            positionViewAtIndex(stays, ListView.Beginning);
        }
    }

    Connections {
        target: list.review.selection

        function onRowChosen(row: int) {
            list.moveTo(row);
        }
    }

    onWantsCardsChanged: takeForm()
    Component.onCompleted: takeForm()
    Keys.onPressed: event => event.accepted = handleKey(event)
    onActiveFocusChanged: {
        if (activeFocus && !isInView(currentItem)) {
            currentIndex = rowAt(contentY + topMargin);
        }
    }

    ClipRow {
        id: compact

        paneWidth: list.width
    }

    ClipCard {
        id: card

        paneWidth: list.width
    }

    SidebarSubclipRow {
        id: inlineSubclip

        paneWidth: list.width
    }

    SidebarSubclipRow {
        id: flatSubclip

        paneWidth: list.width
        style: SidebarSubclipRow.Flat
    }

    delegate: ReviewRow {
        width: list.width
        showsHover: list.hoveredRow === index
        focused: list.activeFocus && ListView.isCurrentItem
        form: isInline ? inlineSubclip : isSubclip ? flatSubclip : list.clipForm
        onPressed: list.review.selection.clickRow(index, Qt.NoModifier)
    }

    // One ring for the current row, whichever it is.
    Item {
        readonly property int outset: Theme.focusRingGap + Theme.focusRingWidth

        x: outset
        y: list.currentItem ? list.currentItem.y + outset : 0
        z: 2
        width: list.width - 2 * outset
        height: list.currentItem ? list.currentItem.height - 2 * outset : 0
        visible: list.activeFocus && list.currentItem !== null

        FocusRing {
            objectName: "review.list.ring"
            visible: parent.visible
        }
    }

    HoverHandler {
        id: pointer
    }

    TapHandler {
        id: tap

        onTapped: point => {
            const row = list.indexAt(point.position.x, point.position.y);
            if (row >= 0) {
                list.currentIndex = row;
                list.review.selection.clickRow(row, tap.point.modifiers);
            }
        }
    }
}
