// A flag of a clip with the letter of its key, tinted while it is on.
//   title, symbol, shortcut, helpText: string; isOn: bool; activeColor, activeBorder, activeInk: color;
//   signal clicked()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Button {
    id: control

    property string title
    property string symbol
    property string shortcut
    property string helpText
    property bool isOn: false
    property color activeColor: Theme.b4
    property color activeBorder: Theme.line2
    property color activeInk: Theme.t1

    implicitHeight: Theme.controlHeight
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: Theme.s8
    rightPadding: Theme.s8 + Theme.s2
    focusPolicy: Qt.TabFocus
    Keys.onReturnPressed: Buttons.click(control)
    Keys.onEnterPressed: Buttons.click(control)

    HelpText.text: helpText
    Accessible.role: Accessible.CheckBox
    Accessible.name: title
    Accessible.description: helpText
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.onPressAction: Buttons.click(control)
    Accessible.onToggleAction: Buttons.click(control)

    background: Rectangle {
        radius: height / 2
        color: control.isOn ? control.activeColor
             : control.down ? Theme.b6 : control.hovered ? Theme.b5 : Theme.b4
        border.width: control.isOn ? Theme.hairline : 0
        border.color: control.activeBorder

        FocusRing {
            shown: control.visualFocus
            cornerRadius: parent.radius
        }
    }
    contentItem: Row {
        spacing: Theme.flagGap

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: control.symbol
            size: Theme.flagIcon
            color: control.isOn ? control.activeInk : Theme.t2
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: control.title
            type: Theme.listName
            Accessible.ignored: true
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            leftPadding: Theme.s2
            text: control.shortcut
            type: Theme.small
            color: control.isOn ? Theme.t1 : Theme.t2
            Accessible.ignored: true
        }
    }
}
