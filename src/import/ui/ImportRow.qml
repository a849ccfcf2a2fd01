// A row of the preview. A click anywhere includes or excludes its file.
//   the roles of ImportRowList; focused, showsFocusRing: bool; signal toggled()
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
    property bool showsFocusRing: false

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
        color: area.containsMouse && row.canToggle ? Theme.hoveredRow : Theme.transparent

        Item {
            anchors.fill: parent
            anchors.leftMargin: Theme.spacing16
            anchors.rightMargin: Theme.spacing16
            anchors.topMargin: Theme.focusRingGap + Theme.focusRingWidth
            anchors.bottomMargin: anchors.topMargin

            FocusRing {
                visible: row.showsFocusRing
            }
        }
    }

    Row {
        anchors.fill: parent
        anchors.leftMargin: Theme.sheetPadding
        anchors.rightMargin: Theme.sheetPadding
        spacing: Theme.importColumnGap

        CheckBox { // display only; the row handles presses
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.checkBoxSize
            enabled: row.canToggle
            checked: row.included
            focusPolicy: Qt.NoFocus
            Accessible.ignored: true
        }
        Item {
            width: Theme.iconSize
            height: parent.height

            Icon {
                anchors.centerIn: parent
                symbol: "film"
                size: Theme.buttonIconSize
                color: row.canToggle ? Theme.secondaryText : Theme.placeholderText
            }
        }
        Item {
            id: names

            readonly property real arrowed: Theme.checkIconSize + 2 * Theme.spacing8
            readonly property bool hasBoth: row.proposedName !== ""

            width: parent.width - Theme.checkBoxSize - Theme.iconSize - Theme.importSidecarColumnWidth
                   - Theme.importBadgeColumnWidth - Theme.importSizeColumnWidth - 5 * parent.spacing
            height: parent.height

            Label {
                id: from

                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, !names.hasBoth ? parent.width
                    : Math.max((parent.width - names.arrowed) / 2,
                               parent.width - names.arrowed - to.implicitWidth))
                text: row.name
                textStyle: Theme.listNameStyle
                literal: true
                color: row.canToggle ? Theme.primaryText : Theme.placeholderText
                Accessible.ignored: true
            }
            Icon {
                anchors.left: from.right
                anchors.leftMargin: Theme.spacing8
                anchors.verticalCenter: parent.verticalCenter
                visible: names.hasBoth
                symbol: "arrow.right"
                size: Theme.checkIconSize
            }
            Label {
                id: to

                anchors.left: from.right
                anchors.leftMargin: names.arrowed
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, parent.width - from.width - names.arrowed)
                visible: names.hasBoth
                text: row.proposedName
                textStyle: Theme.listNameStyle
                literal: true
                Accessible.ignored: true
            }
        }
        Label {
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.importSidecarColumnWidth
            text: row.sidecarText
            textStyle: Theme.listStyle
            muted: true
            Accessible.ignored: true
        }
        Item {
            width: Theme.importBadgeColumnWidth
            height: parent.height

            ImportTag {
                anchors.verticalCenter: parent.verticalCenter
                visible: row.badge !== ""
                text: row.badge
                outlined: row.isRenamed
            }
        }
        TabularLabel {
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.importSizeColumnWidth
            text: row.sizeText
            textStyle: Theme.listStyle
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
