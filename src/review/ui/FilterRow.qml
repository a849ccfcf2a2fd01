// The filter row above the list: chips on the first line; search, sort, count and bulk actions on the
// second.
//   review: ReviewScreenState; signal focusLeft(): Esc was pressed in the search field
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Review

Rectangle {
    id: root

    required property ReviewScreenState review
    readonly property FilterBar bar: review.filterBar

    signal focusLeft()

    implicitHeight: Theme.filterRowHeight + Theme.hairline
    color: Theme.panelBackground
    Accessible.role: Accessible.ToolBar
    Accessible.name: qsTr("Filters")

    Row {
        id: chips

        x: Theme.regionPadding
        y: Theme.spacing8
        spacing: Theme.chipGap

        Repeater {
            model: root.bar.chips.length

            Chip {
                required property int index
                readonly property var chip: root.bar.chips[index]

                function showActive() {
                    checked = Qt.binding(() => chip.isActive);
                }

                objectName: "filter." + chip.title
                focusPolicy: Qt.TabFocus
                text: chip.title
                Component.onCompleted: showActive()
                onClicked: {
                    root.bar.click(chip.chip);
                    showActive(); // restores the binding, which the click has removed
                }
            }
        }

        Chip {
            objectName: "filter.rating"
            focusPolicy: Qt.TabFocus
            text: root.bar.ratingLabel
            checked: root.bar.ratingIsActive
            menu: ChoiceMenu {
                objectName: "filter.rating.menu"
                name: qsTr("Rating")
                items: root.bar.ratingItems
                onChosen: item => root.bar.chooseRating(item)
            }
        }
    }

    Item {
        anchors.top: chips.bottom
        anchors.topMargin: Theme.spacing6
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.regionPadding
        anchors.rightMargin: Theme.regionPadding
        height: Theme.controlHeight

        TextField {
            id: search

            objectName: "filter.search"
            width: Theme.searchFieldWidth
            rightPadding: root.bar.searchQuery !== "" ? clear.width + 2 * Theme.spacing2 : Theme.spacing8
            symbol: "search"
            placeholderText: qsTr("Search filenames, notes, labels, tags")
            text: root.bar.searchQuery
            onTextEdited: root.bar.searchQuery = text
            Keys.onEscapePressed: root.focusLeft()
        }

        PaneButton {
            id: clear

            objectName: "filter.clearSearch"
            anchors.right: search.right
            anchors.rightMargin: Theme.spacing2
            anchors.verticalCenter: search.verticalCenter
            visible: root.bar.searchQuery !== ""
            small: true
            symbol: "xmark.circle.fill"
            iconSize: Theme.buttonIconSize
            helpText: qsTr("Clear search")
            onClicked: {
                if (activeFocus) {
                    search.forceActiveFocus(Qt.TabFocusReason);
                }
                root.bar.searchQuery = "";
            }
        }

        PaneButton {
            id: sort

            objectName: "filter.sort"
            anchors.left: search.right
            anchors.leftMargin: Theme.spacing12
            textStyle: Theme.listNameStyle
            text: root.bar.sortLabel
            trailingSymbol: "chevron.down"
            Accessible.role: Accessible.ButtonMenu
            onClicked: sortMenu.openBelow(sort)
            Keys.onDownPressed: event => Buttons.press(sort, event)

            ChoiceMenu {
                id: sortMenu

                objectName: "filter.sort.menu"
                name: qsTr("Sort")
                items: root.bar.sortItems
                onChosen: item => root.bar.chooseSort(item)
            }
        }

        Label {
            objectName: "filter.count"
            anchors.left: sort.right
            anchors.leftMargin: Theme.spacing12
            anchors.right: bulk.left
            anchors.rightMargin: Theme.spacing12
            anchors.verticalCenter: parent.verticalCenter
            text: root.bar.countLabel
            textStyle: Theme.listStyle
            muted: true
        }

        Row {
            id: bulk

            anchors.right: parent.right
            spacing: Theme.chipGap
            visible: root.bar.hasBulkActions

            PaneButton {
                objectName: "filter.addToSelects"
                textStyle: Theme.listNameStyle
                symbol: "plus"
                text: qsTr("Add to Selects")
                helpText: qsTr("Mark every visible item with the export S flag")
                onClicked: root.review.setVisibleSelected(true)
            }

            PaneButton {
                objectName: "filter.removeFromSelects"
                textStyle: Theme.listNameStyle
                symbol: "minus"
                text: qsTr("Remove from Selects")
                helpText: qsTr("Clear the export S flag on every visible item")
                onClicked: root.review.setVisibleSelected(false)
            }
        }
    }

    Divider {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
