// A single-line text field.
//   text, placeholderText: string; name: string (its accessible name, by default the placeholder);
//   symbol: string (an icon at the left); helpText: string; takesEscape: bool; signals
//   textEdited(), accepted(), escapePressed() (only with `takesEscape`; otherwise Esc propagates)
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.TextField {
    id: control

    property string name: placeholderText
    property string symbol
    property string helpText
    property bool takesEscape: false
    property bool showsHover: hovered
    property bool showsFocusRing: activeFocus

    signal escapePressed()

    implicitHeight: Theme.controlHeight
    implicitWidth: Theme.fieldWidth
    leftPadding: Theme.spacing8 + Theme.hairline
                 + (symbol !== "" ? Theme.buttonIconSize + Theme.spacing6 : 0)
    rightPadding: Theme.spacing8 + Theme.hairline
    verticalAlignment: TextInput.AlignVCenter
    font: Theme.bodyStyle.font
    color: enabled ? Theme.primaryText : Theme.disabledText
    placeholderTextColor: enabled ? Theme.placeholderText : Theme.disabledText
    selectionColor: Theme.textSelection
    selectedTextColor: Theme.primaryText
    selectByMouse: true
    hoverEnabled: true

    Keys.onEscapePressed: event => {
        if (takesEscape) {
            control.escapePressed();
        } else {
            event.accepted = false;
        }
    }

    HelpText.text: helpText
    Accessible.role: Accessible.EditableText
    Accessible.name: name
    Accessible.description: helpText

    Icon {
        x: Theme.spacing8 + Theme.hairline
        anchors.verticalCenter: parent.verticalCenter
        visible: control.symbol !== ""
        symbol: control.symbol
        size: Theme.buttonIconSize
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

    background: FieldBackground {
        focused: control.showsFocusRing
        showsHover: control.showsHover
    }
}
