// A month to choose a day from.
//   date: string, ISO: where it opens; name: string; opener: Item, which gets the focus back;
//   signal chosen(string date)
// Qt 6.4 has no way to say that a delegate knows what surrounds it.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Popup {
    id: control

    property string date
    property string name
    property Item opener: null

    signal chosen(string date)

    function take(day: string) {
        control.chosen(day);
        control.close();
    }

    focus: true
    margins: Theme.spacing8
    padding: Theme.spacing8 + Theme.hairline
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onAboutToShow: month.date = date
    onOpened: grid.forceActiveFocus(Qt.TabFocusReason)
    onClosed: {
        if (opener) {
            opener.forceActiveFocus(Qt.PopupFocusReason);
        }
    }

    CalendarMonth {
        id: month
    }

    background: Rectangle {
        color: Theme.popupBackground
        radius: Theme.panelRadius
        border.width: Theme.hairline
        border.color: Theme.panelBorder
    }

    contentItem: Column {
        spacing: Theme.spacing4

        Item {
            width: grid.width
            height: Theme.controlHeight

            Button {
                symbol: "chevron.left"
                helpText: qsTr("Previous month")
                focusPolicy: Qt.NoFocus
                onClicked: month.turn(-1)
            }
            Label {
                anchors.centerIn: parent
                text: month.title
                textStyle: Theme.bodyStrongStyle
            }
            Button {
                anchors.right: parent.right
                symbol: "chevron.right"
                helpText: qsTr("Next month")
                focusPolicy: Qt.NoFocus
                onClicked: month.turn(1)
            }
        }

        Row {
            Repeater {
                model: month.weekdays

                Label {
                    required property string modelData

                    width: Theme.controlHeight + Theme.spacing2
                    horizontalAlignment: Text.AlignHCenter
                    text: modelData
                    textStyle: Theme.smallStyle
                    muted: true
                }
            }
        }

        Grid {
            id: grid

            objectName: "calendarDays"
            columns: 7
            activeFocusOnTab: true
            Accessible.role: Accessible.Table
            Accessible.focusable: true
            Accessible.name: control.name + ", " + month.date
            Keys.onLeftPressed: month.moveDays(-1)
            Keys.onRightPressed: month.moveDays(1)
            Keys.onUpPressed: month.moveDays(-7)
            Keys.onDownPressed: month.moveDays(7)
            Keys.onReturnPressed: control.take(month.date)
            Keys.onEnterPressed: control.take(month.date)
            Keys.onSpacePressed: control.take(month.date)
            Keys.onPressed: event => {
                if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown) {
                    month.moveMonths(event.key === Qt.Key_PageUp ? -1 : 1);
                    event.accepted = true;
                }
            }

            Repeater {
                model: month.days

                CalendarDay {
                    required property var modelData

                    date: modelData.date
                    day: modelData.day
                    name: modelData.name
                    inMonth: modelData.inMonth
                    chosen: modelData.chosen
                    focused: grid.activeFocus && modelData.chosen
                    onClicked: control.take(modelData.date)
                }
            }
        }
    }
}
