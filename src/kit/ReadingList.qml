// A list to read: Tab reaches the list itself, and the arrow keys, Page Up, Page Down, Home and End
// scroll it. Its rows take no focus.
//   name: string (its accessible name); step, page: real, what a key scrolls; a ListView otherwise
import QtQuick
import Corvane.Kit

ScrollingList {
    id: list

    property real step: Theme.previewRowHeight
    property real page: height

    function scrollBy(distance: real) {
        const top = originY - topMargin;
        const bottom = Math.max(top, originY + contentHeight + bottomMargin - height);
        contentY = Math.max(top, Math.min(bottom, contentY + distance));
    }

    activeFocusOnTab: true
    currentIndex: -1
    Accessible.focusable: true

    Keys.onPressed: event => {
        const distance = {
            [Qt.Key_Up]: -step,
            [Qt.Key_Down]: step,
            [Qt.Key_PageUp]: -page,
            [Qt.Key_PageDown]: page,
            [Qt.Key_Home]: -contentHeight,
            [Qt.Key_End]: contentHeight
        }[event.key];
        if (distance !== undefined) {
            scrollBy(distance);
            event.accepted = true;
        }
    }
}
