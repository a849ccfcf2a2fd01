// A list that stops at its bounds and has a scroll bar. The owner handles the keys.
//   name: string (its accessible name); a ListView otherwise
import QtQuick
import QtQuick.Templates as T

ListView {
    property string name

    clip: true
    keyNavigationEnabled: false
    boundsBehavior: Flickable.StopAtBounds
    T.ScrollBar.vertical: ScrollBar {}
    Accessible.role: Accessible.List
    Accessible.name: name
}
