// One line to type into.
//   text, placeholderText: string; name: string (its accessible name; the placeholder without one);
//   symbol: string (an icon at its left); helpText: string; takesEscape: bool; signals textEdited(),
//   accepted(), escaped() (on Esc with `takesEscape`; else Esc is passed on)
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.TextField {
    id: control

    property string name: placeholderText
    property string symbol
    property string helpText
    property bool takesEscape: false
    property bool lit: hovered
    property bool ring: activeFocus

    signal escaped()

    implicitHeight: Theme.controlHeight
    implicitWidth: Theme.fieldWidth
    leftPadding: Theme.s8 + Theme.hairline + (symbol !== "" ? Theme.iconButton + Theme.s6 : 0)
    rightPadding: Theme.s8 + Theme.hairline
    verticalAlignment: TextInput.AlignVCenter
    font: Theme.body.font
    color: enabled ? Theme.t1 : Theme.t3
    placeholderTextColor: enabled ? Theme.tp : Theme.t3
    selectionColor: Theme.chipOnBorder
    selectedTextColor: Theme.t1
    selectByMouse: true
    hoverEnabled: true

    Keys.onEscapePressed: event => {
        if (takesEscape) {
            control.escaped();
        } else {
            event.accepted = false;
        }
    }

    HelpText.text: helpText
    Accessible.role: Accessible.EditableText
    Accessible.name: name
    Accessible.description: helpText

    Icon {
        x: Theme.s8 + Theme.hairline
        anchors.verticalCenter: parent.verticalCenter
        visible: control.symbol !== ""
        symbol: control.symbol
        size: Theme.iconButton
    }

    Text {
        x: control.leftPadding
        width: control.width - control.leftPadding - control.rightPadding
        height: control.height
        visible: control.length === 0 && control.preeditText === ""
        text: control.placeholderText
        font: control.font
        color: control.placeholderTextColor
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        textFormat: Text.PlainText
        Accessible.ignored: true
    }

    background: FieldGround {
        focused: control.ring
        lit: control.lit
    }
}
