// A modal question or message. Return presses the default button, Esc the other one; a click
// outside does nothing.
//   title, text: string; acceptText: string; cancelText: string, empty for a message with one
//   button; choices: var, a list of objects with answer (int) and label, for further buttons above
//   the others; subject: var, null or an object with title, text and, if needed, acceptText,
//   cancelText, destructive and choices: the alert is open while it has a subject, and keeps the
//   texts while it fades out; prominent: bool (the default button in accent); destructive: bool;
//   signals accepted(), rejected() (Esc on a message accepts it), chosen(int answer), when the alert
//   starts to close
// Buttons are "<objectName>.accept", "<objectName>.cancel" and "<objectName>.choice<answer>".
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T

ModalPopup {
    id: control

    property string title
    property string text
    property string acceptText: qsTr("OK")
    property string cancelText
    property bool prominent: false
    property bool destructive: false
    property var choices: []
    property var subject: null

    signal accepted()
    signal rejected()
    signal chosen(int answer)

    onSubjectChanged: {
        if (!subject) {
            close();
            return;
        }
        title = subject.title;
        text = subject.text;
        acceptText = subject.acceptText ?? acceptText;
        cancelText = subject.cancelText ?? cancelText;
        destructive = subject.destructive ?? destructive;
        choices = subject.choices ?? choices;
        open();
    }

    function finish(accepts: bool) {
        control.close();
        if (accepts) {
            control.accepted();
        } else {
            control.rejected();
        }
    }

    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? Math.round(parent.height * 0.5 - height * 0.56) : 0
    width: Math.min(Theme.alertWidth, parent ? parent.width - Theme.spacing32 : Theme.alertWidth)
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: Theme.spacing24 - Theme.spacing4 + Theme.hairline
    bottomPadding: Theme.spacing16 + Theme.hairline
    onOpened: accept.forceActiveFocus(Qt.TabFocusReason)

    contentItem: FocusScope {
        focus: true
        implicitHeight: column.implicitHeight
        Accessible.role: Accessible.AlertMessage
        Accessible.name: control.title
        Accessible.description: control.text
        Keys.onEscapePressed: event => {
            if (!event.isAutoRepeat) {
                control.finish(control.cancelText === "");
            }
        }

        Column {
            id: column

            width: parent.width
            spacing: Theme.spacing6

            Label {
                width: parent.width
                text: control.title
                textStyle: Theme.headingStyle
                literal: true
                wrapMode: Text.Wrap
            }
            Flickable { // a path in it can be thousands of characters long
                width: parent.width
                height: Math.min(message.height, control.parent ? control.parent.height / 2
                                                                : message.height)
                contentHeight: message.height
                clip: interactive
                interactive: contentHeight > height
                boundsBehavior: Flickable.StopAtBounds
                T.ScrollBar.vertical: ScrollBar {}

                Label {
                    id: message

                    width: parent.width
                    text: control.text
                    literal: true
                    lineHeight: textStyle.lineHeight + Theme.hairline
                    wrapMode: Text.Wrap
                }
            }
            Column {
                width: parent.width
                topPadding: Theme.spacing12
                spacing: Theme.spacing6
                visible: control.choices.length > 0

                Repeater {
                    model: control.choices

                    delegate: Button {
                        required property var modelData

                        objectName: control.objectName + ".choice" + modelData.answer
                        width: parent.width
                        large: true
                        text: modelData.label
                        onClicked: {
                            control.close();
                            control.chosen(modelData.answer);
                        }
                    }
                }
            }
            Row {
                anchors.right: parent.right
                topPadding: Theme.spacing12
                spacing: Theme.buttonGap

                Button {
                    objectName: control.objectName + ".cancel"
                    visible: control.cancelText !== ""
                    large: true
                    text: control.cancelText
                    onClicked: control.finish(false)
                }
                Button {
                    id: accept

                    objectName: control.objectName + ".accept"
                    large: true
                    kind: control.prominent ? Button.Primary : Button.Plain
                    destructive: control.destructive
                    text: control.acceptText
                    onClicked: control.finish(true)
                }
            }
        }
    }
}
