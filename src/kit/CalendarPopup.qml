// A calendar to choose a day from. The arrow keys, Page Up and Page Down move the selection, Return
// chooses it, Esc closes the calendar.
//   date: string, ISO, selected at first (today if it is no date); name: string; opener: Item, gets
//   the focus back; signal chosen(string date)
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Popup {
    id: control

    property string date
    property string name
    property Item opener: null
    property string selected
    readonly property var english: Qt.locale("en_US")

    signal chosen(string date)

    // JavaScript parses and prints ISO days as UTC, so no time zone shifts the day.
    function isoDay(year: int, month: int, day: int): string {
        const date = new Date(0);
        date.setUTCFullYear(year, month, day);
        return date.toISOString().slice(0, 10);
    }

    function select(day: string) {
        const date = new Date(day);
        selected = day;
        monthGrid.year = date.getUTCFullYear();
        monthGrid.month = date.getUTCMonth();
    }

    function moveDays(count: int) {
        const date = new Date(selected);
        select(isoDay(date.getUTCFullYear(), date.getUTCMonth(), date.getUTCDate() + count));
    }

    function moveMonths(count: int) {
        const date = new Date(selected);
        const day = date.getUTCDate();
        date.setUTCMonth(date.getUTCMonth() + count);
        if (date.getUTCDate() !== day) {
            date.setUTCDate(0); // the month is shorter: its last day
        }
        select(date.toISOString().slice(0, 10));
    }

    // Shows another month and keeps the selection.
    function turn(count: int) {
        const first = new Date(Date.UTC(monthGrid.year, monthGrid.month + count));
        monthGrid.year = first.getUTCFullYear();
        monthGrid.month = first.getUTCMonth();
    }

    function choose(day: string) {
        control.chosen(day);
        control.close();
    }

    focus: true
    margins: Theme.spacing8
    padding: Theme.spacing8 + Theme.hairline
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
    onAboutToShow: {
        const today = new Date();
        select(Format.isDay(date)
               ? date : isoDay(today.getFullYear(), today.getMonth(), today.getDate()));
    }
    onOpened: days.forceActiveFocus(Qt.TabFocusReason)
    onClosed: {
        if (opener) {
            opener.forceActiveFocus(Qt.PopupFocusReason);
        }
    }

    background: BorderedPanel {}

    contentItem: Column {
        spacing: Theme.spacing4

        Item {
            width: days.width
            height: Theme.controlHeight

            Button {
                symbol: "chevron.left"
                helpText: qsTr("Previous month")
                focusPolicy: Qt.NoFocus
                onClicked: control.turn(-1)
            }
            Label {
                anchors.centerIn: parent
                text: control.english.standaloneMonthName(monthGrid.month) + " " + monthGrid.year
                textStyle: Theme.bodyStrongStyle
            }
            Button {
                anchors.right: parent.right
                symbol: "chevron.right"
                helpText: qsTr("Next month")
                focusPolicy: Qt.NoFocus
                onClicked: control.turn(1)
            }
        }

        T.AbstractDayOfWeekRow {
            id: weekdays

            implicitWidth: implicitContentWidth
            implicitHeight: implicitContentHeight
            contentItem: Row {
                Repeater {
                    model: weekdays.source

                    Label {
                        required property int day

                        width: Theme.controlHeight + Theme.spacing2
                        horizontalAlignment: Text.AlignHCenter
                        text: control.english.dayName(day, Locale.ShortFormat).slice(0, 2)
                        textStyle: Theme.smallStyle
                        muted: true
                    }
                }
            }
        }

        Item {
            id: days

            objectName: "calendarDays"
            width: monthGrid.width
            height: monthGrid.height
            activeFocusOnTab: true
            Accessible.role: Accessible.Table
            Accessible.focusable: true
            Accessible.name: control.name + ", " + control.selected
            Keys.onLeftPressed: control.moveDays(-1)
            Keys.onRightPressed: control.moveDays(1)
            Keys.onUpPressed: control.moveDays(-7)
            Keys.onDownPressed: control.moveDays(7)
            Keys.onReturnPressed: control.choose(control.selected)
            Keys.onEnterPressed: control.choose(control.selected)
            Keys.onSpacePressed: control.choose(control.selected)
            Keys.onPressed: event => {
                if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown) {
                    control.moveMonths(event.key === Qt.Key_PageUp ? -1 : 1);
                    event.accepted = true;
                }
            }

            T.AbstractMonthGrid {
                id: monthGrid

                implicitWidth: implicitContentWidth
                implicitHeight: implicitContentHeight
                contentItem: Grid {
                    columns: 7

                    Repeater {
                        model: monthGrid.source

                        CalendarDay {
                            required property var model

                            date: control.isoDay(model.year, model.month, model.day)
                            day: model.day
                            name: day + " " + control.english.monthName(model.month) + " "
                                  + model.year
                            inMonth: model.month === monthGrid.month
                            selected: date === control.selected
                            focused: days.activeFocus && selected
                            onClicked: control.choose(date)
                        }
                    }
                }
            }
        }
    }
}
