// Shows the help text of what the pointer rests on, enabled or not. One to a window, on top of it;
// AppWindow has one. A control gives its text by `HelpText.text`.
//   shownText: string, read-only
import QtQuick
import Corvane.Kit

Item {
    id: tip

    readonly property alias shownText: help.text

    anchors.fill: parent

    HelpText {
        id: help

        delay: Theme.helpTextDelay
        onShownChanged: {
            if (subject) {
                tip.place(subject);
            }
        }
    }

    function place(subject: Item) {
        const below = subject.mapToItem(tip, 0, subject.height + Theme.s6);
        const above = subject.mapToItem(tip, 0, -Theme.s6);
        label.text = help.text;
        panel.x = Math.max(Theme.s4, Math.min(tip.width - panel.width - Theme.s4,
            below.x + (subject.width - panel.width) / 2));
        panel.y = below.y + panel.height <= tip.height ? below.y : above.y - panel.height;
    }

    Rectangle {
        id: panel

        objectName: "helpTip"
        width: label.width + 2 * (Theme.s8 + Theme.hairline)
        height: label.height + Theme.s8
        color: Theme.b5
        radius: Theme.menuRowRadius
        border.width: Theme.hairline
        border.color: Theme.line2
        visible: opacity > 0
        opacity: help.text !== "" ? 1 : 0
        Accessible.role: Accessible.ToolTip
        Accessible.name: label.text

        Behavior on opacity {
            NumberAnimation { duration: Theme.popup }
        }

        Label {
            id: label

            x: Theme.s8 + Theme.hairline
            y: Theme.s4
            width: Math.min(Math.ceil(implicitWidth), tip.width / 2)
            type: Theme.small
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
}
