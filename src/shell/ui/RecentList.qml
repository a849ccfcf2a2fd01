// The recent projects. Up and Down change the current row, Return opens it, Delete removes it from
// the list.
//   recents: the list; signal leftUpwards(), on Up in the first row
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Shell

ScrollingList {
    id: list

    required property RecentProjectsModel recents

    signal leftUpwards()

    objectName: "home.recents"
    model: recents
    activeFocusOnTab: true
    keyNavigationEnabled: true
    highlightFollowsCurrentItem: true
    bottomMargin: Theme.spacing24
    name: qsTr("Recent Projects")

    Keys.onReturnPressed: recents.open(currentIndex)
    Keys.onEnterPressed: recents.open(currentIndex)
    Keys.onDeletePressed: recents.remove(currentIndex)
    Keys.onUpPressed: event => {
        if (currentIndex <= 0) {
            list.leftUpwards();
        } else {
            event.accepted = false;
        }
    }

    delegate: RecentRow {
        width: list.width
        focused: list.activeFocus && ListView.isCurrentItem
        removeHelp: list.recents.removeToolTip
        onOpened: list.recents.open(index)
        onRemoved: list.recents.remove(index)
    }
}
