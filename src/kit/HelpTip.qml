// Shows the help text of the item under the pointer, enabled or not. Each AppWindow has one. A
// control sets its text with `HelpText.text`.
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
        const below = subject.mapToItem(tip, 0, subject.height + Theme.spacing6);
        const above = subject.mapToItem(tip, 0, -Theme.spacing6);
        label.text = help.text;
        panel.x = Math.max(Theme.spacing4, Math.min(tip.width - panel.width - Theme.spacing4,
            below.x + (subject.width - panel.width) / 2));
        panel.y = below.y + panel.height <= tip.height ? below.y : above.y - panel.height;
    }

    BorderedPanel {
        id: panel

        objectName: "helpTip"
        width: label.width + 2 * (Theme.spacing8 + Theme.hairline)
        height: label.height + Theme.spacing8
        color: Theme.controlHovered
        radius: Theme.menuRowRadius
        visible: opacity > 0
        opacity: help.text !== "" ? 1 : 0
        Accessible.role: Accessible.ToolTip
        Accessible.name: label.text

        Behavior on opacity {
            NumberAnimation { duration: Theme.popupDuration }
        }

        Label {
            id: label

            x: Theme.spacing8 + Theme.hairline
            y: Theme.spacing4
            width: Math.min(Math.ceil(implicitWidth), tip.width / 2)
            textStyle: Theme.smallStyle
            literal: true
            wrapMode: Text.Wrap
            Accessible.ignored: true
        }
    }
}
