// A menu for choosing one of several items.
//   items: list of maps with "title", "isCurrent" and optionally "isDivider"; the number of items and
//   the dividers must not change; signal chosen(int item)
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit

PopUpMenu {
    id: choices

    required property var items

    signal chosen(int item)

    Component.onCompleted: items.forEach((item, index) => {
        addItem(item.isDivider ? divider.createObject(contentItem)
                               : choice.createObject(contentItem, { index: index, objectName: objectName + "." + index }));
    })

    Component {
        id: divider

        MenuDivider {}
    }

    Component {
        id: choice

        MenuItem {
            required property int index

            function showCurrent() {
                checked = Qt.binding(() => choices.items[index].isCurrent);
            }

            text: choices.items[index].title
            checkable: true
            Component.onCompleted: showCurrent()
            onTriggered: {
                choices.chosen(index);
                showCurrent(); // restores the binding, which the click has removed
            }
        }
    }
}
