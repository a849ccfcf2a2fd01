// The list in the side pane. It gets the focus by Tab only. With the focus, Return clicks the current
// row unless it is chosen already, and Ctrl+Space marks it; other keys are left to the screen.
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

    function moveTo(row: int) {
        if (row >= 0 && row < count) {
            currentIndex = row;
            positionViewAtIndex(row, ListView.Contain);
        }
    }

    // Clicks the current row. Without modifiers the chosen row leaves the key to the screen.
    function clickCurrentRow(event: var) {
        const row = currentItem as ReviewRow;
        event.accepted = row !== null && !(row.isSelected && (event.modifiers & ~Qt.KeypadModifier) === 0);
        if (event.accepted && !event.isAutoRepeat) {
            review.selection.clickRow(currentIndex, event.modifiers);
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
    Keys.onReturnPressed: event => clickCurrentRow(event)
    Keys.onEnterPressed: event => clickCurrentRow(event)
    Keys.onSpacePressed: event => {
        event.accepted = event.modifiers === Qt.ControlModifier;
        if (event.accepted) {
            clickCurrentRow(event);
        }
    }
    onActiveFocusChanged: {
        if (activeFocus) {
            moveTo(currentIndex);
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
