// A field for a date, typed as "2025-06-13" or chosen in a calendar. The button or Down opens the
// calendar. On Return or when the field loses focus, invalid text reverts to `date`.
//   date: string, ISO; name: string; openCalendar(); signal edited(string date),
//   for each valid date that the user types or chooses; the owner sets `date`
import QtQuick
import Corvane.Kit

TextField {
    id: control

    property string date

    signal edited(string date)

    function submit(day: string) {
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
    onTextEdited: submit(text)
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
        onChosen: day => control.submit(day)
    }
}
