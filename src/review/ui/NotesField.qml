// The notes of the inspector's clip. It grows with them up to a height and then scrolls. What is typed
// goes to the clip that is shown, at each keystroke, and its echo leaves the cursor alone; notes that
// come from elsewhere, or of another clip, start afresh, with nothing of the old ones to undo.
//   inspector: ClipInspector
import QtQuick
import Corvane.Kit
import Corvane.Review

TextArea {
    id: notes

    required property ClipInspector inspector
    property bool isTelling: false
    property bool isTaking: false

    function take() {
        isTaking = true;
        text = text === " " ? "" : " "; // setting what stands there already would keep its history
        text = inspector.notes;
        isTaking = false;
    }

    implicitHeight: Math.max(Theme.notesMinHeight,
        Math.min(Theme.notesMaxHeight, Math.ceil(input.implicitHeight) + 2 * Theme.focusRingWidth))
    input.wrapMode: inspector.notesBreakInWords ? TextEdit.WrapAnywhere : TextEdit.Wrap
    name: qsTr("Notes")
    Component.onCompleted: take()
    onTextEdited: {
        if (!isTaking) {
            isTelling = true;
            inspector.notes = text;
            isTelling = false;
        }
    }

    // What the field has no use for is no key of the screen either.
    Keys.onEscapePressed: input.focus = false
    Keys.onPressed: event => {
        event.accepted = event.key !== Qt.Key_Tab && event.key !== Qt.Key_Backtab;
    }

    Connections {
        target: notes.inspector

        function onNotesChanged() {
            if (!notes.isTelling) {
                notes.take();
            }
        }
    }
}
