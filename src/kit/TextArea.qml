// Several lines to type into; scrolls when there is more than fits. Tab leaves it.
//   text, placeholderText: string; name: string (its accessible name); helpText: string;
//   signal textEdited(); input: the TextArea itself
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.ScrollView {
    id: control

    property alias text: area.text
    property alias placeholderText: area.placeholderText
    property alias input: area
    property string name: placeholderText
    property string helpText

    signal textEdited()

    implicitWidth: Theme.formWidth
    implicitHeight: Theme.areaHeight
    padding: Theme.ringWidth
    HelpText.text: helpText
    Accessible.ignored: true

    T.TextArea {
        id: area

        objectName: control.objectName === "" ? "" : control.objectName + ".input"
        implicitHeight: contentHeight + topPadding + bottomPadding
        leftPadding: Theme.s8 - Theme.hairline
        rightPadding: Theme.s8 - Theme.hairline
        topPadding: Theme.s6 - Theme.hairline
        bottomPadding: Theme.s6 - Theme.hairline
        font: Theme.body.font
        color: enabled ? Theme.t1 : Theme.t3
        placeholderTextColor: enabled ? Theme.tp : Theme.t3
        selectionColor: Theme.chipOnBorder
        selectedTextColor: Theme.t1
        selectByMouse: true
        wrapMode: TextEdit.Wrap
        textFormat: TextEdit.PlainText
        KeyNavigation.priority: KeyNavigation.BeforeItem
        KeyNavigation.tab: nextItemInFocusChain(true)
        KeyNavigation.backtab: nextItemInFocusChain(false)
        onTextChanged: {
            if (activeFocus) {
                control.textEdited();
            }
        }

        Accessible.role: Accessible.EditableText
        Accessible.multiLine: true
        Accessible.name: control.name
        Accessible.description: control.helpText

        Text {
            x: area.leftPadding
            y: area.topPadding
            width: area.width - area.leftPadding - area.rightPadding
            visible: area.length === 0 && area.preeditText === ""
            text: area.placeholderText
            font: area.font
            color: area.placeholderTextColor
            elide: Text.ElideRight
            textFormat: Text.PlainText
            Accessible.ignored: true
        }
    }

    background: FieldGround {
        focused: area.activeFocus
        lit: area.hovered
    }

    T.ScrollBar.vertical: ScrollBar {
        parent: control
        x: control.width - width
        height: control.height
    }
}
