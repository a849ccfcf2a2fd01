// The notes of the inspector's clip. Grows with the text up to a maximum height. Every keystroke is
// saved; the resulting change notification is ignored, which keeps the cursor. Notes that change in
// another way replace the text and clear its undo history.
//   inspector: ClipInspector
import QtQuick
import Corvane.Kit
import Corvane.Review

TextArea {
    id: notes

    required property ClipInspector inspector
    property bool isSaving: false
    property bool isLoading: false

    function load() {
        isLoading = true;
        text = text === " " ? "" : " "; // setting an equal text would keep the undo history
        text = inspector.notes;
        isLoading = false;
    }

    implicitHeight: Math.max(Theme.notesMinHeight,
        Math.min(Theme.notesMaxHeight, Math.ceil(input.implicitHeight) + 2 * Theme.focusRingWidth))
    input.wrapMode: inspector.notesBreakInWords ? TextEdit.WrapAnywhere : TextEdit.Wrap
    name: qsTr("Notes")
    Component.onCompleted: load()
    onTextEdited: {
        if (!isLoading) {
            isSaving = true;
            inspector.notes = text;
            isSaving = false;
        }
    }

    // Keys that the field ignores must not reach the screen.
    Keys.onEscapePressed: input.focus = false
    Keys.onPressed: event => {
        event.accepted = event.key !== Qt.Key_Tab && event.key !== Qt.Key_Backtab;
    }

    Connections {
        target: notes.inspector

        function onNotesChanged() {
            if (!notes.isSaving) {
                notes.load();
            }
        }
    }
}
