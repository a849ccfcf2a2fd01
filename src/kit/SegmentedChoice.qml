// A choice of one from a few options side by side. Left and Right change it, Home and End select
// the first and the last option.
//   model: list of strings; currentIndex: int; name: string (its accessible name); signal
//   activated(int index), by the user only
// Segments have the objectName "<objectName>.<index>". The owner binds `currentIndex` and changes
// the value behind it in `activated`.
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

FocusItem {
    id: control

    property var model: []
    property int currentIndex: 0
    property string name
    property bool showsFocusRing: visualFocus

    signal activated(int index)

    function choose(index: int) {
        if (index >= 0 && index < model.length && index !== currentIndex) {
            activated(index);
        }
    }

    implicitHeight: Theme.controlHeight
    implicitWidth: row.implicitWidth + 2 * (Theme.spacing2 + Theme.hairline)

    Keys.onLeftPressed: choose(currentIndex - 1)
    Keys.onRightPressed: choose(currentIndex + 1)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
            control.choose(event.key === Qt.Key_Home ? 0 : control.model.length - 1);
            event.accepted = true;
        }
    }

    Accessible.role: Accessible.PageTabList
    Accessible.name: name
    Accessible.focusable: true

    BorderedPanel {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: Theme.fieldBackground

        FocusRing {
            visible: control.showsFocusRing
        }
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: Theme.spacing2

        Repeater {
            model: control.model

            T.AbstractButton {
                id: segment

                required property int index
                required property string modelData
                readonly property bool chosen: index === control.currentIndex

                objectName: control.objectName + "." + index
                text: modelData
                focusPolicy: Qt.NoFocus
                implicitHeight: Theme.controlHeight - 2 * (Theme.spacing2 + Theme.hairline)
                implicitWidth: label.implicitWidth + 2 * Theme.spacing12

                onPressed: control.forceActiveFocus(Qt.MouseFocusReason)
                onClicked: control.choose(index)

                Accessible.role: Accessible.RadioButton
                Accessible.name: text
                Accessible.onPressAction: Buttons.click(segment)
                Accessible.checkable: true
                Accessible.checked: chosen

                background: Rectangle {
                    radius: Theme.menuRowRadius
                    color: segment.chosen
                           ? (control.enabled ? Theme.controlPressed : Theme.controlDisabled)
                         : segment.hovered && control.enabled ? Theme.hoveredRow : Theme.transparent
                }
                contentItem: ControlText {
                    id: label

                    text: segment.text
                    font: Theme.listNameStyle.font
                    color: !control.enabled ? Theme.disabledText
                         : segment.chosen ? Theme.primaryText : Theme.secondaryText
                    horizontalAlignment: Text.AlignHCenter
                }
            }
        }
    }
}
