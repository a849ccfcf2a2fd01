// A menu of the destination folders of earlier handoffs.
//   handoff: HandoffSheet
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Handoff

Button {
    id: recent

    required property HandoffSheet handoff

    objectName: "handoff.recent"
    enabled: handoff.hasRecents
    symbol: "clock"
    trailingSymbol: "chevron.down"
    text: qsTr("Recent")
    helpText: handoff.recentsHelp
    onClicked: menu.openBelow(recent, true)

    PopUpMenu {
        id: menu

        name: recent.text

        Instantiator {
            model: recent.handoff.recents

            delegate: MenuItem {
                required property int index
                required property string modelData

                objectName: "handoff.recent." + index
                text: modelData
                literal: true
                helpText: modelData
                onTriggered: recent.handoff.chooseRecent(index)
            }
            onObjectAdded: (index, object) => menu.insertItem(index, object)
            onObjectRemoved: (index, object) => menu.removeItem(object)
        }
    }
}
