// A menu that a click elsewhere closes.
//   children: MenuItem, MenuDivider, PopUpMenu (a submenu); name: string (its accessible name);
//   openBelow(item) opens it below a control, and returns the focus to the previously focused item
//   when it closes; openBelow(item, true) aligns the right edges
import QtQuick
import QtQuick.Templates as T

T.Menu {
    id: control

    property string name: title
    property Item opener: null

    function openBelow(item: Item, fromRight: bool) {
        opener = item.Window.activeFocusItem ?? item;
        popup(item, fromRight ? item.width - width : 0, item.height + Theme.spacing4, null);
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
