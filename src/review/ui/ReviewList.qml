// The list in the side pane. It gets the focus by Tab only. With the focus, Up, Down, Home, End, Page
// Up and Page Down move the current row, and Return and Space click it; other keys are not accepted.
//   review: ReviewScreenState
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Review

ScrollingList {
    id: list

    required property ReviewScreenState review
    readonly property bool wantsCards: review.filterBar.useLargeThumbnails
    property bool showsCards: false
    readonly property RowForm clipForm: showsCards ? card : compact
    readonly property int hoveredRow: pointer.hovered
        ? indexAt(0, contentY + mapFromItem(null, pointer.point.scenePosition).y) : -1

    objectName: "review.list"
    model: review.list
    reuseItems: true
    topMargin: Theme.spacing2
    bottomMargin: Theme.spacing2
    activeFocusOnTab: count > 0
    highlightFollowsCurrentItem: false
    name: qsTr("Clips")

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

    // Moves to the edge of the view, or by a view if the current row is there.
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

    // Keeps the first visible clip at the top.
    function updateForm() {
        if (showsCards !== wantsCards) {
            const top = rowAt(contentY + topMargin);
            const clip = review.list.clipRowFrom(top);
            const kept = itemAtIndex(clip) ? clip : top;
            showsCards = wantsCards;
            forceLayout();
            positionViewAtIndex(kept, ListView.Beginning);
        }
    }

    Connections {
        target: list.review.selection

        function onRowChosen(row: int) {
            list.moveTo(row);
        }
    }

    onWantsCardsChanged: updateForm()
    Component.onCompleted: updateForm()
    Keys.onPressed: event => event.accepted = handleKey(event)
    onActiveFocusChanged: {
        if (activeFocus && !isInView(currentItem)) {
            currentIndex = rowAt(contentY + topMargin);
        }
    }

    RowForm {
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

    // The focus ring of the current row.
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
