// A single-line text field.
//   text, placeholderText: string; name: string (its accessible name, by default the placeholder);
//   symbol: string (an icon at the left); signals textEdited(), accepted()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.TextField {
    id: control

    property string name: placeholderText
    property string symbol
    property bool showsHover: hovered
    property bool showsFocusRing: activeFocus

    implicitHeight: Theme.controlHeight
    implicitWidth: Theme.fieldWidth
    leftPadding: Theme.spacing8 + Theme.hairline
                 + (symbol !== "" ? Theme.buttonIconSize + Theme.spacing6 : 0)
    rightPadding: Theme.spacing8 + Theme.hairline
    verticalAlignment: TextInput.AlignVCenter
    font: Theme.bodyStyle.literalFont
    color: enabled ? Theme.primaryText : Theme.disabledText
    placeholderTextColor: enabled ? Theme.placeholderText : Theme.disabledText
    selectionColor: Theme.textSelection
    selectedTextColor: Theme.primaryText
    selectByMouse: true
    hoverEnabled: true

    Accessible.role: Accessible.EditableText
    Accessible.name: name

    Icon {
        x: Theme.spacing8 + Theme.hairline
        anchors.verticalCenter: parent.verticalCenter
        visible: control.symbol !== ""
        symbol: control.symbol
        size: Theme.buttonIconSize
    }

    Placeholder {
        field: control
        height: control.height
    }

    background: FieldBackground {
        focused: control.showsFocusRing
        showsHover: control.showsHover
    }
}
