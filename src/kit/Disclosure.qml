// A line with a chevron that shows or hides its content.
//   text: string; open: bool, bound by the owner or left to the control; helpText: string;
//   focusPolicy: of the line; default content: items, stacked below the line; signal toggled(bool
//   open), by the user only
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

Column {
    id: control

    property string text
    property bool open: false
    property string helpText
    property alias focusPolicy: line.focusPolicy
    default property alias content: inner.data

    signal toggled(bool open)

    spacing: Theme.spacing4

    T.AbstractButton {
        id: line

        objectName: control.objectName + ".line"
        implicitHeight: Theme.smallButtonHeight
        implicitWidth: implicitContentWidth + rightPadding
        rightPadding: Theme.spacing8
        focusPolicy: Qt.StrongFocus
        text: control.text
        onClicked: {
            control.open = !control.open;
            control.toggled(control.open);
        }
        Keys.onReturnPressed: event => {
            Buttons.click(line);
            event.accepted = true; // see Button
        }
        Keys.onEnterPressed: event => {
            Buttons.click(line);
            event.accepted = true; // see Button
        }

        HelpText.text: control.helpText
        Accessible.role: Accessible.Button
        Accessible.name: text
        Accessible.onPressAction: Buttons.click(line)
        Accessible.description: control.helpText
        Accessible.checkable: true
        Accessible.checked: control.open

        contentItem: Row {
            spacing: Theme.spacing2

            Icon {
                anchors.verticalCenter: parent.verticalCenter
                symbol: control.open ? "chevron.down" : "chevron.right"
                size: Theme.buttonIconSize
                color: line.enabled ? Theme.secondaryText : Theme.disabledText
            }
            Text {
                anchors.verticalCenter: parent.verticalCenter
                text: line.text
                font: Theme.listNameStyle.font
                color: line.enabled ? Theme.primaryText : Theme.disabledText
                textFormat: Text.PlainText
                Accessible.ignored: true
            }
        }
        background: Rectangle {
            radius: Theme.menuRowRadius
            color: line.hovered && line.enabled ? Theme.hoveredRow : Theme.transparent

            FocusRing {
                visible: line.visualFocus
                cornerRadius: parent.radius
            }
        }
    }

    Column {
        id: inner

        width: parent.width
        visible: control.open
    }
}
