// A line with a chevron that shows or hides its content.
//   text: string; open: bool; focusPolicy: of the line; default content: items, stacked below the
//   line
import QtQuick
import Corvane.Kit

Column {
    id: control

    property string text
    property bool open: false
    property alias focusPolicy: line.focusPolicy
    default property alias content: inner.data

    spacing: Theme.spacing4

    ButtonBase {
        id: line

        objectName: control.objectName + ".line"
        implicitHeight: Theme.smallButtonHeight
        implicitWidth: implicitContentWidth + rightPadding
        rightPadding: Theme.spacing8
        text: control.text
        onClicked: control.open = !control.open
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
            ControlText {
                anchors.verticalCenter: parent.verticalCenter
                text: line.text
                font: Theme.listNameStyle.font
                color: line.enabled ? Theme.primaryText : Theme.disabledText
            }
        }
        background: Rectangle {
            radius: Theme.menuRowRadius
            color: line.showsHover ? Theme.hoveredRow : Theme.transparent

            FocusRing {
                visible: line.showsFocusRing
            }
        }
    }

    Column {
        id: inner

        width: parent.width
        visible: control.open
    }
}
