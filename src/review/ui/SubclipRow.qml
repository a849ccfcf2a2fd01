// A subclip of the clip in the player. Clicking its name edits the name; clicking elsewhere plays the
// subclip. Return stores the edited name, and so does leaving the field; Esc discards it.
//   review: ReviewScreenState; the roles of SubclipListModel; isEditing: bool, read-only; signal
//   editingEnded(): Return or Esc was pressed
import QtQuick
import Corvane.Kit
import Corvane.Review

FocusItem {
    id: row

    required property ReviewScreenState review
    required property int index
    required property string subclipId
    required property string name
    required property string label
    required property string range
    required property string length
    required property int rating
    required property bool favorite
    required property bool selectedForExport
    required property string thumbnail
    required property string fallbackThumbnail
    required property bool isAudioOnly
    required property string thumbnailRoot
    required property bool isActive
    readonly property alias isEditing: field.visible

    signal editingEnded()

    function select() {
        review.selection.selectSubclip(review.selection.selectedVideoId, subclipId);
    }

    // Keys of a control inside the row that the control ignores are left to the screen.
    function selectByKey(event: var) {
        event.accepted = activeFocus;
        if (activeFocus) {
            select();
        }
    }

    function edit() {
        field.text = label;
        field.visible = true;
        field.forceActiveFocus(Qt.OtherFocusReason);
    }

    function commit() {
        if (isEditing) {
            const isChanged = field.text !== label;
            field.visible = false;
            if (isChanged) {
                review.marking.renameSubclip(subclipId, field.text);
            }
        }
    }

    objectName: "subclip." + index
    implicitHeight: Theme.drawerRowHeight
    Keys.onReturnPressed: event => row.selectByKey(event)
    Keys.onEnterPressed: event => row.selectByKey(event)
    Keys.onSpacePressed: event => row.selectByKey(event)
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: range
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: isActive
    Accessible.onPressAction: row.select()

    RowBackground {
        anchors.fill: parent
        current: row.isActive
        showsHover: pointer.hovered
    }

    HoverHandler {
        id: pointer
    }

    MouseArea {
        anchors.fill: parent
        onClicked: {
            row.commit();
            row.select();
        }
    }

    FocusRing {
        anchors.margins: 0
        visible: row.visualFocus
    }

    VideoThumbnail {
        id: picture

        x: Theme.regionPadding
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.drawerThumbnailWidth
        height: Theme.drawerThumbnailHeight
        primaryURL: row.thumbnail
        fallbackURL: row.fallbackThumbnail
        isAudioOnly: row.isAudioOnly
        root: row.thumbnailRoot
    }

    Item {
        id: names

        anchors.left: picture.right
        anchors.leftMargin: Theme.drawerRowGap
        anchors.right: rangeText.left
        anchors.rightMargin: Theme.drawerRowGap
        height: parent.height

        ButtonBase {
            id: nameButton

            objectName: row.objectName + ".name"
            anchors.verticalCenter: parent.verticalCenter
            visible: !field.visible
            width: Math.min(nameLabel.implicitWidth, parent.width)
            height: Theme.smallButtonHeight
            focusPolicy: Qt.TabFocus
            text: row.name
            helpText: nameLabel.truncated ? row.name : ""
            onClicked: row.edit()
            Accessible.description: qsTr("Rename")

            contentItem: Label {
                id: nameLabel

                verticalAlignment: Text.AlignVCenter
                text: row.name
                textStyle: Theme.bodyLabelStyle
                literal: true
                Accessible.ignored: true
            }
            background: Item {
                FocusRing {
                    visible: nameButton.visualFocus
                }
            }
        }

        TextField {
            id: field

            objectName: row.objectName + ".field"
            anchors.verticalCenter: parent.verticalCenter
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: -leftPadding
            visible: false
            implicitHeight: Theme.smallButtonHeight
            leftPadding: Theme.spacing6 + Theme.hairline
            name: qsTr("Name of the subclip")
            onAccepted: {
                row.commit();
                row.editingEnded();
            }
            Keys.onEscapePressed: {
                text = row.label;
                row.commit();
                row.editingEnded();
            }
            onActiveFocusChanged: {
                if (!activeFocus) {
                    row.commit();
                }
            }

            // Keys that the field ignores must not reach the screen.
            Keys.priority: Keys.AfterItem
            Keys.onPressed: event => {
                event.accepted = event.key !== Qt.Key_Tab && event.key !== Qt.Key_Backtab;
            }
        }
    }

    TabularLabel {
        id: rangeText

        anchors.right: lengthText.left
        anchors.rightMargin: Theme.drawerRowGap
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.drawerRangeWidth
        text: row.range
        textStyle: Theme.listStyle
        rightAligned: true
    }

    TabularLabel {
        id: lengthText

        anchors.right: buttons.left
        anchors.rightMargin: Theme.drawerRowGap
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.drawerLengthWidth
        text: row.length
        textStyle: Theme.listStyle
        muted: true
        rightAligned: true
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: Theme.spacing8
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.drawerRowGap

        StarRating {
            objectName: row.objectName + ".rating"
            rating: row.rating
            onRated: stars => row.review.marking.rateSubclip(row.subclipId, stars)
        }

        PaneButton {
            objectName: row.objectName + ".favorite"
            symbol: row.favorite ? "heart.fill" : "heart"
            iconSize: Theme.buttonIconSize
            glyphColor: row.favorite ? Theme.favorite : Theme.secondaryText
            helpText: qsTr("Favorite this subclip (independent of parent)")
            onClicked: row.review.marking.toggleSubclipFavorite(row.subclipId)
            Accessible.checkable: true
            Accessible.checked: row.favorite
        }

        ExportMarkButton {
            objectName: row.objectName + ".selected"
            isOn: row.selectedForExport
            helpText: qsTr("Mark for export")
            onClicked: row.review.marking.toggleSubclipSelected(row.subclipId)
        }

        PaneButton {
            objectName: row.objectName + ".delete"
            symbol: "trash"
            destructive: true
            helpText: qsTr("Delete subclip (Ctrl+Z to undo)")
            onClicked: row.review.marking.deleteSubclip(row.subclipId)
        }
    }
}
