// A push button. With text it is 28 high (32 with `large`); without text it is a square that shows
// its symbol only, and its help text is its name.
//   text, symbol: string; helpText: string; kind: Button.Plain | Button.Primary | Button.Bare
//   (no ground); destructive: bool (turns danger under the pointer); large, small: bool;
//   muted: bool (label in t2); iconSize: int; trailingSymbol: string (a menu's chevron);
//   lit, ring: bool (under the pointer, focused by keyboard); glyphInk: color; signal clicked()
// Return, Enter and Space press it while it has the focus. Disabled it still shows its help text.
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Button {
    id: control

    enum Kind { Plain, Primary, Bare }

    property int kind: iconOnly ? Button.Bare : Button.Plain
    property string symbol
    property string trailingSymbol
    property string helpText
    property bool destructive: false
    property bool large: false
    property bool small: false
    property bool muted: false
    property bool ring: visualFocus
    property int iconSize: iconOnly ? (destructive ? Theme.iconButton : Theme.icon) : Theme.iconButton
    property var type: small ? Theme.listName
                             : kind === Button.Primary ? Theme.bodyStrong : Theme.bodyLabel
    readonly property bool iconOnly: text === ""
    property bool lit: hovered && enabled
    readonly property color ground: !enabled ? (kind === Button.Bare ? Theme.none : Theme.b3)
        : kind === Button.Primary ? (down ? Theme.accentPressed : lit ? Theme.accentHover : Theme.accent)
        : destructive && down ? Theme.danger
        : kind === Button.Bare ? (down ? Theme.b5 : lit ? Theme.b4 : Theme.none)
        : down ? Theme.b6 : lit ? Theme.b5 : Theme.b4
    readonly property color ink: !enabled ? Theme.t3
        : kind === Button.Primary ? Theme.accentText
        : destructive && down ? Theme.dangerText
        : destructive && lit ? Theme.danger
        : muted ? Theme.t2 : Theme.t1
    property color glyphInk: !enabled || kind === Button.Primary || (destructive && (lit || down))
        ? ink : Theme.t2

    implicitHeight: large ? Theme.footButtonHeight
                          : small ? Theme.smallButtonHeight : Theme.controlHeight
    implicitWidth: iconOnly ? implicitHeight : implicitContentWidth + leftPadding + rightPadding
    leftPadding: iconOnly ? 0 : (large ? Theme.s16 : Theme.s12) - (symbol !== "" ? Theme.s4 : 0)
    rightPadding: iconOnly ? 0 : (large ? Theme.s16 : Theme.s12) - (trailingSymbol !== "" ? Theme.s4 : 0)
    spacing: Theme.s6
    focusPolicy: Qt.StrongFocus
    font: type.font

    Keys.onReturnPressed: event => control.pressByKey(event)
    Keys.onEnterPressed: event => control.pressByKey(event)

    function pressByKey(event: var) {
        if (!event.isAutoRepeat) {
            Buttons.click(control);
        }
        event.accepted = true; // the click's own keys went through the same event
    }

    HelpText.text: helpText
    Accessible.role: Accessible.Button
    Accessible.name: iconOnly ? helpText : text
    Accessible.onPressAction: Buttons.click(control)
    Accessible.description: iconOnly ? "" : helpText

    contentItem: Item {
        implicitWidth: Math.ceil(label.implicitWidth) + row.aside

        Row {
            id: row

            readonly property real aside: (control.symbol !== "" ? leading.width + control.spacing : 0)
                                          + (control.trailingSymbol !== "" ? trailing.width + control.spacing : 0)

            anchors.centerIn: parent
            spacing: control.spacing

            Icon {
                id: leading

                anchors.verticalCenter: parent.verticalCenter
                visible: control.symbol !== ""
                symbol: control.symbol
                size: control.iconSize
                color: control.glyphInk
            }

            Text {
                id: label

                visible: !control.iconOnly
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, control.availableWidth - row.aside)
                text: control.text
                font: control.font
                color: control.ink
                elide: Text.ElideRight
                textFormat: Text.PlainText
                Accessible.ignored: true
            }

            Icon {
                id: trailing

                anchors.verticalCenter: parent.verticalCenter
                visible: control.trailingSymbol !== ""
                symbol: control.trailingSymbol
                size: Theme.iconButton
                color: control.glyphInk
            }
        }
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: control.ground

        FocusRing {
            shown: control.ring
        }
    }
}
