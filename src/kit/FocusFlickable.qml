// A Flickable that scrolls the item with the keyboard focus into view.
//   focusMargin: real, space kept above and below that item; a Flickable otherwise
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

Flickable {
    id: control

    property real focusMargin: 0

    function show(item: Item) {
        let visiblePart = item; // the Flickable around it, if it is in one that scrolls by itself
        for (let ancestor = item; ancestor && ancestor !== control; ancestor = ancestor.parent) {
            if (ancestor instanceof Flickable) {
                visiblePart = ancestor;
            }
            if (ancestor === contentItem) {
                const top = visiblePart.mapToItem(contentItem, 0, 0).y - focusMargin;
                const bottom = top + Math.min(visiblePart.height + 2 * focusMargin, height);
                contentY = Math.max(0, Math.min(contentY, top), bottom - height);
            }
        }
    }

    contentWidth: width
    boundsBehavior: Flickable.StopAtBounds
    clip: true
    T.ScrollBar.vertical: ScrollBar {}

    Connections {
        target: control.Window.window

        function onActiveFocusItemChanged() {
            control.show(control.Window.activeFocusItem);
        }
    }
}
