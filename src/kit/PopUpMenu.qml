// A menu that a click elsewhere closes. The underlined letter of a row chooses it.
//   children: MenuItem, MenuDivider, PopUpMenu (a submenu); name: string (its accessible name);
//   mnemonic: int, index in the title of the letter that opens it in its parent menu, or -1;
//   openBelow(item) opens it below a control, and returns the focus to the previously focused item
//   when it closes; openBelow(item, true) aligns the right edges
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Menu {
    id: control

    property string name: title
    property int mnemonic: -1
    property Item opener: null

    function openBelow(item: Item, fromRight: bool) {
        opener = item.Window.activeFocusItem ?? item;
        popup(item, fromRight ? item.width - width : 0, item.height + Theme.spacing4, null);
    }

    function chooseByLetter(letter: string): bool {
        for (let i = 0; i < count; ++i) {
            const row = itemAt(i) as MenuItem;
            if (row && row.enabled && row.mnemonic >= 0
                && row.text[row.mnemonic].toLowerCase() === letter.toLowerCase()) {
                currentIndex = i;
                Buttons.click(row);
                return true;
            }
        }
        return false;
    }

    margins: Theme.spacing8
    padding: Theme.spacing4 + Theme.hairline
    overlap: Theme.spacing4
    implicitWidth: Math.max(Theme.menuMinWidth, Math.min(Theme.menuMaxWidth,
                            contentItem.implicitWidth + leftPadding + rightPadding))
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    modal: false
    cascade: true
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside

    onClosed: {
        if (opener && opener.visible && opener.enabled) {
            opener.forceActiveFocus(Qt.PopupFocusReason);
        }
        opener = null;
    }

    delegate: MenuItem {}

    contentItem: ListView {
        implicitHeight: contentHeight
        implicitWidth: {
            let widest = 0;
            for (let i = 0; i < control.count; ++i) {
                widest = Math.max(widest, control.itemAt(i).implicitWidth);
            }
            return widest;
        }
        model: control.contentModel
        interactive: contentHeight > height
        clip: interactive
        currentIndex: control.currentIndex
        focus: true
        Keys.onPressed: event => {
            if (event.key === Qt.Key_F10) {
                control.dismiss();
            } else {
                event.accepted = !event.isAutoRepeat && control.chooseByLetter(event.text);
            }
        }
        Accessible.role: Accessible.PopupMenu
        Accessible.name: control.name
        T.ScrollBar.vertical: ScrollBar {}
    }

    background: BorderedPanel {}

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.popupDuration }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.popupDuration }
    }
}
