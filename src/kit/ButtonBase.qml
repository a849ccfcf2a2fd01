// The keys, help text and accessibility of a button. The derived control draws it.
//   text: string; helpText: string, shown while disabled too; showsHover, showsFocusRing: bool; signal
//   clicked(), by the pointer, Return, Enter or Space
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Button {
    id: control

    property string helpText
    property bool showsHover: hovered && enabled
    property bool showsFocusRing: visualFocus

    focusPolicy: Qt.StrongFocus
    Keys.onReturnPressed: event => Buttons.press(control, event)
    Keys.onEnterPressed: event => Buttons.press(control, event)

    HelpText.text: helpText
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: helpText
    Accessible.onPressAction: Buttons.click(control)
    Accessible.onToggleAction: Buttons.click(control)
}
