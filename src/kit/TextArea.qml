// A text field with several lines that scrolls. Tab leaves it.
//   text, placeholderText: string; name: string (its accessible name); input: the TextArea inside,
//   named "<objectName>.input"; signal textEdited(), if the text changes while the field has the
//   focus
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

Item {
    id: control

    property alias text: area.text
    property alias placeholderText: area.placeholderText
    property alias input: area
    property string name: placeholderText

    signal textEdited()

    function leave(forward: bool) {
        area.nextItemInFocusChain(forward)
            .forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason);
    }

    implicitWidth: Theme.formWidth
    implicitHeight: Theme.textAreaHeight

    FieldBackground {
        anchors.fill: parent
        focused: area.activeFocus
        showsHover: area.hovered
    }

    Flickable {
        anchors.fill: parent
        anchors.margins: Theme.focusRingWidth
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollBar {}

        T.TextArea.flickable: T.TextArea {
            id: area

            objectName: control.objectName === "" ? "" : control.objectName + ".input"
            implicitHeight: contentHeight + topPadding + bottomPadding
            leftPadding: Theme.spacing8 - Theme.hairline
            rightPadding: Theme.spacing8 - Theme.hairline
            topPadding: Theme.spacing6 - Theme.hairline
            bottomPadding: Theme.spacing6 - Theme.hairline
            font: Theme.bodyStyle.literalFont
            color: enabled ? Theme.primaryText : Theme.disabledText
            placeholderTextColor: enabled ? Theme.placeholderText : Theme.disabledText
            selectionColor: Theme.textSelection
            selectedTextColor: Theme.primaryText
            selectByMouse: true
            wrapMode: TextEdit.Wrap
            textFormat: TextEdit.PlainText
            Keys.onTabPressed: control.leave(true)
            Keys.onBacktabPressed: control.leave(false)
            onTextChanged: {
                if (activeFocus) {
                    control.textEdited();
                }
            }

            Accessible.role: Accessible.EditableText
            Accessible.multiLine: true
            Accessible.name: control.name

            Placeholder { field: area }
        }
    }
}
