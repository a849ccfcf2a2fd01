// The rows of the preview. Up, Down, Page Up, Page Down, Home and End move between rows that can be
// included; Space includes or excludes the current one.
//   sheet: ImportSheet
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Import
import Corvane.Kit

ScrollingList {
    id: list

    required property ImportSheet sheet
    readonly property ImportRowList rows: sheet.rows
    readonly property int page: Math.max(1, Math.floor(height / Theme.importRowHeight) - 1)
    property bool byPointer: false

    function go(row: int) {
        if (row >= 0) {
            currentIndex = row;
            positionViewAtIndex(row, ListView.Contain);
        }
    }

    // Scrolls if there is no further row.
    function step(direction: int) {
        const next = rows.nextToggleable(currentIndex, direction);
        go(next);
        if (next < 0) {
            contentY = Math.max(0, Math.min(contentHeight - height,
                                            contentY + direction * Theme.importRowHeight));
        }
    }

    function press(row: int) {
        byPointer = true;
        forceActiveFocus(Qt.MouseFocusReason);
        if (rows.toggleableNear(row) === row) {
            currentIndex = row;
        }
        sheet.toggleRow(row);
    }

    function pressKey(event: var) {
        event.accepted = true;
        switch (event.key) {
        case Qt.Key_Up:
            return step(-1);
        case Qt.Key_Down:
            return step(1);
        case Qt.Key_PageUp:
            return go(rows.toggleableNear(currentIndex - page));
        case Qt.Key_PageDown:
            return go(rows.toggleableNear(currentIndex + page));
        case Qt.Key_Home:
            positionViewAtBeginning();
            return go(rows.toggleableNear(0));
        case Qt.Key_End:
            positionViewAtEnd();
            return go(rows.toggleableNear(count));
        case Qt.Key_Space:
            if (!event.isAutoRepeat) {
                sheet.toggleRow(currentIndex);
            }
            return;
        }
        event.accepted = false;
    }

    objectName: "import.rows"
    model: rows
    reuseItems: true
    activeFocusOnTab: count > 0
    highlightFollowsCurrentItem: false
    name: qsTr("Preview")
    onActiveFocusChanged: {
        if (!activeFocus) {
            byPointer = false;
        } else if (!byPointer) {
            go(rows.toggleableNear(Math.max(0, currentIndex)));
        }
    }

    Keys.onPressed: event => {
        byPointer = false;
        pressKey(event);
    }

    delegate: ImportRow {
        width: list.width
        focused: list.activeFocus && ListView.isCurrentItem && canToggle
        showsFocusRing: focused && !list.byPointer
        onToggled: list.press(index)
    }
}
