// A long list that is read: Tab reaches it, and the keys that scroll do.
//   name: string (its accessible name); a ListView otherwise
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

ListView {
    id: list

    property string name
    property real step: Theme.previewRowHeight

    function scrollBy(distance: real) {
        const top = originY;
        const bottom = originY + Math.max(0, contentHeight - height);
        contentY = Math.max(top, Math.min(bottom, contentY + distance));
    }

    activeFocusOnTab: true
    currentIndex: -1 // the list itself has the focus, none of its rows
    keyNavigationEnabled: false
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: name
    Accessible.focusable: true

    Keys.onUpPressed: scrollBy(-step)
    Keys.onDownPressed: scrollBy(step)
    Keys.onPressed: event => {
        const far = {
            [Qt.Key_PageUp]: -height,
            [Qt.Key_PageDown]: height,
            [Qt.Key_Home]: -contentHeight,
            [Qt.Key_End]: contentHeight
        }[event.key];
        if (far !== undefined) {
            scrollBy(far);
            event.accepted = true;
        }
    }
}
