// A toggle for a flag of a clip, with its key; tinted if the flag is on.
//   title, symbol, shortcut, helpText: string; isOn: bool; activeColor, activeBorder, activeInk: color;
//   signal clicked()
import QtQuick
import Corvane.Kit

ButtonBase {
    id: control

    property string title
    property string symbol
    property string shortcut
    property bool isOn: false
    property color activeColor: Theme.controlBackground
    property color activeBorder: Theme.panelBorder
    property color activeInk: Theme.primaryText

    implicitHeight: Theme.controlHeight
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: Theme.spacing8
    rightPadding: Theme.spacing8 + Theme.spacing2
    focusPolicy: Qt.TabFocus

    Accessible.role: Accessible.CheckBox
    Accessible.name: title
    Accessible.checkable: true
    Accessible.checked: isOn

    background: Rectangle {
        radius: height / 2
        color: control.isOn ? control.activeColor
             : control.down ? Theme.controlPressed : control.hovered ? Theme.controlHovered : Theme.controlBackground
        border.width: control.isOn ? Theme.hairline : 0
        border.color: control.activeBorder

        FocusRing {
            visible: control.visualFocus
        }
    }
    contentItem: Row {
        spacing: Theme.flagGap

        Icon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: control.symbol
            size: Theme.flagIconSize
            color: control.isOn ? control.activeInk : Theme.secondaryText
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            text: control.title
            textStyle: Theme.listNameStyle
            Accessible.ignored: true
        }

        Label {
            anchors.verticalCenter: parent.verticalCenter
            leftPadding: Theme.spacing2
            text: control.shortcut
            textStyle: Theme.smallStyle
            color: control.isOn ? Theme.primaryText : Theme.secondaryText
            Accessible.ignored: true
        }
    }
}
