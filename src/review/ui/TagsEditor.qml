// The tags of a clip and a field for adding tags with Return or the button.
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
            text: editor.inspector.newTag
            onTextEdited: editor.inspector.newTag = text
            onAccepted: editor.add()
            Keys.onEscapePressed: focus = false

            // Keys that the field ignores must not reach the screen.
            Keys.priority: Keys.AfterItem
            Keys.onPressed: event => {
                event.accepted = event.key !== Qt.Key_Tab && event.key !== Qt.Key_Backtab;
            }
        }

        PaneButton {
            id: add

            objectName: "inspector.addTag"
            text: qsTr("Add")
            onClicked: editor.add()
        }
    }
}
