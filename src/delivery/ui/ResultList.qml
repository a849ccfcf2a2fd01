// The rows of a finished run. Up and Down move the current row, Space reveals its file, Ctrl+C copies its
// error.
//   sheet: DeliverySheet; rows are "<objectName>.<index>"
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Delivery

Rectangle {
    id: results

    required property DeliverySheet sheet

    color: Theme.windowBackground

    Connections {
        target: results.sheet

        function onResultChanged() {
            list.currentIndex = 0;
            list.positionViewAtBeginning();
        }
    }

    ScrollingList {
        id: list

        objectName: results.objectName + ".list"
        anchors.fill: parent
        activeFocusOnTab: true
        keyNavigationEnabled: true
        highlightFollowsCurrentItem: true
        highlightMoveDuration: 0
        model: results.sheet.results
        footer: Item { height: Theme.spacing16 }
        name: qsTr("Results")
        Accessible.focusable: true
        readonly property ResultRow currentRow: currentItem as ResultRow

        Keys.onSpacePressed: {
            if (currentRow) {
                currentRow.revealed();
            }
        }
        Keys.onPressed: event => {
            if (event.matches(StandardKey.Copy) && currentRow) {
                currentRow.copyText();
                event.accepted = true;
            }
        }

        delegate: ResultRow {
            id: row

            required property int index

            objectName: results.objectName + "." + index
            width: ListView.view.width
            first: index === 0
            active: list.activeFocus && ListView.isCurrentItem
            onRevealed: {
                if (path !== "") {
                    results.sheet.reveal(path);
                }
            }
        }
    }
}
