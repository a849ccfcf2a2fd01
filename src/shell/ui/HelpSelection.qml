// Selects text of the guide across its blocks: by dragging, a double click on a word, or all of it.
// Covers the content of the list; fingers scroll the list as usual.
//   blocks: ReadingList of HelpLine, which has created all its rows; selectedText: string, one line per
//   block; selectAll(); signals linkActivated(string address), menuRequested()
import QtQuick
import Corvane.Kit
import Corvane.Shell

MouseArea {
    id: area

    required property ReadingList blocks
    property string selectedText
    property var fixedEnd: null // the end that stays while dragging: { row, offset }
    property point pointer // in the list
    readonly property int beyondEdge: !(pressedButtons & Qt.LeftButton) ? 0
                                     : pointer.y < 0 ? -1 : pointer.y > blocks.height ? 1 : 0

    signal linkActivated(string address)
    signal menuRequested()

    function line(row: int): HelpLine {
        return blocks.itemAtIndex(row) as HelpLine;
    }

    function rowAt(y: real): int {
        const row = blocks.indexAt(blocks.width / 2, mapToItem(blocks.contentItem, 0, y).y);
        return row >= 0 ? row : y < 0 ? 0 : blocks.count - 1;
    }

    function endAt(x: real, y: real): var {
        const row = rowAt(y);
        const item = line(row);
        return { row: row, offset: item ? item.offsetAt(mapToItem(item, x, y)) : 0 };
    }

    function linkAt(x: real, y: real): string {
        const item = line(rowAt(y));
        return item ? item.linkAt(mapToItem(item, x, y)) : "";
    }

    function select(one: var, other: var) {
        const isForward = one.row < other.row || (one.row === other.row && one.offset <= other.offset);
        const first = isForward ? one : other;
        const last = isForward ? other : one;
        const texts = [];
        for (let row = 0; row < blocks.count; ++row) {
            const item = line(row);
            if (item && (row < first.row || row > last.row)) {
                item.deselect();
            } else if (item) {
                texts.push(item.select(row === first.row ? first.offset : 0,
                                       row === last.row ? last.offset : Infinity));
            }
        }
        selectedText = texts.join("\n");
    }

    function selectAll() {
        select({ row: 0, offset: 0 }, { row: blocks.count - 1, offset: Infinity });
    }

    function extend() {
        const position = mapFromItem(blocks, pointer);
        select(fixedEnd, endAt(position.x, position.y));
    }

    y: blocks.originY
    width: blocks.width
    height: blocks.contentHeight
    acceptedButtons: Qt.LeftButton | Qt.RightButton
    preventStealing: true
    hoverEnabled: true
    cursorShape: linkAt(mouseX, mouseY) !== "" ? Qt.PointingHandCursor : Qt.IBeamCursor

    onPressed: mouse => {
        if (mouse.source !== Qt.MouseEventNotSynthesized) {
            mouse.accepted = false;
        } else if (mouse.button === Qt.RightButton) {
            menuRequested();
        } else {
            blocks.forceActiveFocus(Qt.MouseFocusReason);
            pointer = mapToItem(blocks, mouse.x, mouse.y);
            fixedEnd = endAt(mouse.x, mouse.y);
            extend();
        }
    }
    onPositionChanged: mouse => {
        if (pressedButtons & Qt.LeftButton) {
            pointer = mapToItem(blocks, mouse.x, mouse.y);
            extend();
        }
    }
    onClicked: mouse => {
        const link = linkAt(mouse.x, mouse.y);
        if (mouse.button === Qt.LeftButton && selectedText === "" && link !== "") {
            linkActivated(link);
        }
    }
    onDoubleClicked: mouse => {
        const row = rowAt(mouse.y);
        const word = line(row).wordAt(endAt(mouse.x, mouse.y).offset);
        select({ row: row, offset: word[0] }, { row: row, offset: word[1] });
    }

    Timer { // scrolls while the pointer is held above or below the list
        interval: Theme.helpScrollInterval
        repeat: true
        running: area.beyondEdge !== 0
        onTriggered: {
            area.blocks.scrollBy(area.beyondEdge * area.blocks.step);
            area.extend();
        }
    }
}
