// The chosen sources. Up and Down select a row, Delete removes it.
//   sources: ImportSourceList; signal emptied(): the last row was removed by an action of this list
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Import
import Corvane.Kit

ScrollingList {
    id: list

    required property ImportSourceList sources
    property bool byPointer: false

    signal emptied()

    function remove(row: int) {
        const hadFocus = activeFocus;
        sources.remove(row);
        if (hadFocus && count === 0) {
            emptied();
        }
    }

    objectName: "import.sources"
    model: sources
    activeFocusOnTab: count > 0
    keyNavigationEnabled: true
    name: qsTr("Sources")

    Keys.onPressed: event => {
        list.byPointer = false;
        if (event.key === Qt.Key_Delete || event.key === Qt.Key_Backspace) {
            list.remove(list.currentIndex);
            event.accepted = true;
        }
    }

    delegate: Item {
        id: row

        required property int index
        required property string path
        required property string symbol
        required property string removeHelp
        readonly property bool focused: list.activeFocus && ListView.isCurrentItem

        objectName: "import.source." + index
        width: list.width
        height: Theme.importRowHeight
        HelpText.text: path
        Accessible.role: Accessible.ListItem
        Accessible.name: path
        Accessible.focusable: true
        Accessible.focused: focused

        HoverHandler {
            id: pointer
        }
        TapHandler {
            onTapped: {
                list.byPointer = true;
                list.currentIndex = row.index;
                list.forceActiveFocus(Qt.MouseFocusReason);
            }
        }

        Rectangle {
            anchors.fill: parent
            radius: Theme.controlRadius
            color: pointer.hovered ? Theme.hoveredRow : Theme.transparent

            Item {
                anchors.fill: parent
                anchors.margins: Theme.focusRingGap + Theme.focusRingWidth

                FocusRing {
                    visible: row.focused && !list.byPointer
                }
            }
        }
        Icon {
            id: glyph

            x: Theme.spacing8
            anchors.verticalCenter: parent.verticalCenter
            symbol: row.symbol
        }
        Label {
            anchors.left: glyph.right
            anchors.leftMargin: Theme.spacing8
            anchors.right: cross.left
            anchors.rightMargin: Theme.spacing8
            anchors.verticalCenter: parent.verticalCenter
            text: row.path
            literal: true
            Accessible.ignored: true
        }
        Button {
            id: cross

            objectName: row.objectName + ".remove"
            anchors.right: parent.right
            anchors.rightMargin: Theme.spacing4
            anchors.verticalCenter: parent.verticalCenter
            small: true
            symbol: "xmark"
            iconSize: Theme.buttonIconSize
            helpText: row.removeHelp
            focusPolicy: Qt.NoFocus
            onClicked: list.remove(row.index)
        }
    }
}
