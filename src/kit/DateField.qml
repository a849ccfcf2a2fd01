// A day, typed as "2025-06-13" or chosen in a calendar.
//   date: string, ISO; name: string; helpText: string; calendarShown: bool, read-only;
//   openCalendar(); signal edited(string date), by hand only; the owner sets `date`
// The calendar opens by its button or by Down, and is worked by the arrow keys, Page Up and Page
// Down, Return and Esc. A text that is no day goes back to the day before it when the field is left.
import QtQuick
import Corvane.Kit

TextField {
    id: control

    property string date
    readonly property alias calendarShown: calendar.visible

    signal edited(string date)

    function offer(day: string) {
        if (Format.isDay(day) && day !== date) {
            edited(day);
        }
    }

    function openCalendar() {
        calendar.open();
    }

    implicitWidth: Theme.dateFieldWidth
    rightPadding: Theme.controlHeight
    text: date
    onDateChanged: text = date
    onTextEdited: offer(text)
    onEditingFinished: text = date
    Keys.onDownPressed: control.openCalendar()

    Button {
        anchors.right: parent.right
        anchors.rightMargin: Theme.spacing2
        anchors.verticalCenter: parent.verticalCenter
        objectName: control.objectName + ".calendar"
        small: true
        focusPolicy: Qt.NoFocus
        symbol: "calendar"
        iconSize: Theme.buttonIconSize
        helpText: qsTr("Choose a day")
        onClicked: calendar.visible ? calendar.close() : control.openCalendar()
    }

    CalendarPopup {
        id: calendar

        y: control.height + Theme.spacing4
        name: control.name
        date: control.date
        opener: control
        onChosen: day => control.offer(day)
    }
}
