// The tags of a clip and the field for another one. Return and "Add" put it in and leave the field
// ready for the next.
//   inspector: ClipInspector
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Review

Column {
    id: editor

    required property ClipInspector inspector

    function add() {
        inspector.addTag();
        field.forceActiveFocus(Qt.OtherFocusReason);
    }

    spacing: Theme.spacing8

    FlowLayout {
        id: chips

        objectName: "inspector.tags"
        width: parent.width
        visible: repeater.count > 0

        Repeater {
            id: repeater

            model: editor.inspector.tags

            TagChip {
                id: chip

                required property int index
                required property string display

                objectName: "inspector.tag." + index
                text: display
                maximumWidth: chips.width
                cross.objectName: objectName + ".remove"
                onRemoved: {
                    if (cross.activeFocus) {
                        field.forceActiveFocus(Qt.TabFocusReason);
                    }
                    editor.inspector.removeTag(display);
                }
            }
        }
    }

    Row {
        width: parent.width
        spacing: Theme.chipGap

        TextField {
            id: field

            objectName: "inspector.newTag"
            width: parent.width - add.width - parent.spacing
            name: qsTr("New tag")
            takesEscape: true
            text: editor.inspector.newTag
            onTextEdited: editor.inspector.newTag = text
            onAccepted: editor.add()
            onEscapePressed: focus = false

            // What the field has no use for is no key of the screen either.
            Keys.priority: Keys.AfterItem
            Keys.onPressed: event => {
                event.accepted = event.key !== Qt.Key_Tab && event.key !== Qt.Key_Backtab;
            }
        }

        Button {
            id: add

            objectName: "inspector.addTag"
            text: qsTr("Add")
            focusPolicy: Qt.TabFocus
            onClicked: editor.add()
        }
    }
}
