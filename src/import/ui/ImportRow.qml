// One file of the preview: a click anywhere on it includes it or leaves it out.
//   what the list of rows tells; focused, ring: bool; signal toggled()
import QtQuick
import Corvane.Kit

Item {
    id: row

    required property int index
    required property bool included
    required property bool canToggle
    required property string name
    required property string proposedName
    required property string sidecarText
    required property string badge
    required property bool isRenamed
    required property string sizeText
    required property string helpText
    required property string summary
    property bool focused: false
    property bool ring: false

    signal toggled()

    objectName: "import.row." + index
    height: Theme.importRowHeight
    HelpText.text: helpText
    Accessible.role: Accessible.CheckBox
    Accessible.name: name
    Accessible.description: summary
    Accessible.checkable: canToggle
    Accessible.checked: included
    Accessible.focusable: canToggle
    Accessible.focused: focused
    Accessible.onPressAction: toggled()
    Accessible.onToggleAction: toggled()

    Rectangle {
        anchors.fill: parent
        color: area.containsMouse && row.canToggle ? Theme.hover : Theme.none

        Item {
            anchors.fill: parent
            anchors.leftMargin: Theme.s16
            anchors.rightMargin: Theme.s16
            anchors.topMargin: Theme.ringGap + Theme.ringWidth
            anchors.bottomMargin: anchors.topMargin

            FocusRing {
                shown: row.ring
            }
        }
    }

    Row {
        anchors.fill: parent
        anchors.leftMargin: Theme.sheetPadding
        anchors.rightMargin: Theme.sheetPadding
        spacing: Theme.importColumnGap

        CheckBox { // shows only; the row is what is pressed
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.checkSize
            enabled: row.canToggle
            checked: row.included
            focusPolicy: Qt.NoFocus
            Accessible.ignored: true
        }
        Item {
            width: Theme.icon
            height: parent.height

            Icon {
                anchors.centerIn: parent
                symbol: "film"
                size: Theme.iconButton
                color: row.canToggle ? Theme.t2 : Theme.tp
            }
        }
        Item {
            id: names

            readonly property real arrowed: Theme.iconCheck + 2 * Theme.s8
            readonly property bool hasBoth: row.proposedName !== ""

            width: parent.width - Theme.checkSize - Theme.icon - Theme.importSidecarColumn
                   - Theme.importBadgeColumn - Theme.importSizeColumn - 5 * parent.spacing
            height: parent.height

            Label {
                id: from

                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, !names.hasBoth ? parent.width
                    : Math.max((parent.width - names.arrowed) / 2,
                               parent.width - names.arrowed - to.implicitWidth))
                text: row.name
                type: Theme.listName
                color: row.canToggle ? Theme.t1 : Theme.tp
                Accessible.ignored: true
            }
            Icon {
                anchors.left: from.right
                anchors.leftMargin: Theme.s8
                anchors.verticalCenter: parent.verticalCenter
                visible: names.hasBoth
                symbol: "arrow.right"
                size: Theme.iconCheck
            }
            Label {
                id: to

                anchors.left: from.right
                anchors.leftMargin: names.arrowed
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, parent.width - from.width - names.arrowed)
                visible: names.hasBoth
                text: row.proposedName
                type: Theme.listName
                Accessible.ignored: true
            }
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.importSidecarColumn
            text: row.sidecarText
            type: Theme.list
            muted: true
            Accessible.ignored: true
        }
        Item {
            width: Theme.importBadgeColumn
            height: parent.height

            ImportTag {
                anchors.verticalCenter: parent.verticalCenter
                visible: row.badge !== ""
                text: row.badge
                outlined: row.isRenamed
            }
        }
        FigureLabel {
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.importSizeColumn
            text: row.sizeText
            type: Theme.list
            muted: true
            rightAligned: true
            Accessible.ignored: true
        }
    }

    MouseArea {
        id: area

        anchors.fill: parent
        hoverEnabled: true
        onClicked: row.toggled()
    }
}
