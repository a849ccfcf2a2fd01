// A day in a calendar.
//   date: string, ISO; day: int; name: string; inMonth, selected, focused: bool; signal clicked()
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.AbstractButton {
    id: control

    property string date
    property int day
    property string name
    property bool inMonth: true
    property bool selected: false
    property bool focused: false

    objectName: "day." + date
    implicitWidth: Theme.controlHeight + Theme.spacing2
    implicitHeight: Theme.controlHeight
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.Cell
    Accessible.name: name
    Accessible.onPressAction: Buttons.click(control)
    Accessible.selected: selected

    contentItem: ControlText {
        text: control.day
        font: Theme.listStyle.font
        color: control.selected ? Theme.accentText
             : control.inMonth ? Theme.primaryText : Theme.placeholderText
        horizontalAlignment: Text.AlignHCenter
    }
    background: Item {
        Rectangle {
            anchors.fill: parent
            anchors.margins: Theme.spacing2
            radius: Theme.menuRowRadius
            color: control.selected ? Theme.accent
                 : control.hovered ? Theme.controlHovered : Theme.transparent
            border.width: control.focused ? Theme.focusRingWidth : 0
            border.color: Theme.focusRing
        }
    }
}
