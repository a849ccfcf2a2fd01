// A button that a click leaves without the focus, so that keys still go to the screen.
import QtQuick
import Corvane.Kit

Button {
    focusPolicy: Qt.TabFocus
}
