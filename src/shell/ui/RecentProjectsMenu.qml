// "Open Recent": a row for each recent project, or a disabled row if there are none.
//   app: the application
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Shell

PopUpMenu {
    id: root

    required property CorvaneApp app

    objectName: "menu.openRecent"
    title: app.commands.openRecentLabel

    MenuItem {
        id: emptyRow

        objectName: "menu.noRecentProjects"
        text: root.app.commands.noRecentProjectsLabel
        enabled: false
        visible: root.app.recents.count === 0
        height: visible ? implicitHeight : 0
    }

    Instantiator {
        model: root.app.recents

        delegate: MenuItem {
            required property int index
            required property string name

            objectName: "menu.recent." + index
            text: name
            literal: true
            onTriggered: root.app.recents.open(index)
        }
        onObjectAdded: (index, object) => root.insertItem(index, object)
        onObjectRemoved: (index, object) => root.removeItem(object)
    }

    Connections { // Instantiator ignores moved rows
        target: root.app.recents // qmllint disable type

        function onRowsMoved(parent, from, last, newParent, to) {
            root.moveItem(from, to);
        }
    }
}
