// A modal sheet over the window: a head with its title, content, a foot with its buttons at the
// right. A click outside does nothing; Esc is reported and closes nothing by itself.
//   title: string; headHeight: int; hasHeadLine: bool; name: string (its accessible name, the title by itself); backText: string (a "Back"
//   button in the head when not empty); sheetWidth: real; sheetHeight: real, 0 for as high as its
//   content; maximumMargin: real (what stays free around it); default content: items, laid out by the
//   owner in `body`; foot: items, in a row at the right; defaultButton: what Return presses;
//   initialFocus: Item; signals escaped(), backed()
// open() and close() as for any popup.
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

T.Popup {
    id: control

    property string title
    property string name: title
    property string backText
    property int headHeight: Theme.sheetHeadHeight
    property bool hasHeadLine: true
    property real sheetWidth: implicitContentWidth
    property real sheetHeight: 0
    property real maximumMargin: Theme.s48
    property T.AbstractButton defaultButton: null
    property Item initialFocus: defaultButton
    default property alias content: body.data
    property alias foot: footRow.data
    readonly property alias body: body
    readonly property bool hasHead: title !== "" || backText !== ""
    readonly property bool hasFoot: footRow.children.length > 0

    signal escaped()
    signal backed()

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    modal: true
    focus: true
    closePolicy: T.Popup.NoAutoClose
    padding: Theme.hairline
    width: Math.min(sheetWidth, parent ? parent.width - maximumMargin : sheetWidth)
    height: Math.min(sheetHeight > 0 ? sheetHeight : implicitHeight,
                     parent ? parent.height - maximumMargin : implicitHeight)
    implicitHeight: (hasHead ? headHeight : 0) + body.implicitHeight
                    + (hasFoot ? Theme.sheetFootHeight : 0) + topPadding + bottomPadding
    onOpened: {
        if (initialFocus) {
            initialFocus.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    T.Overlay.modal: Rectangle {
        color: Theme.scrim

        Behavior on opacity {
            NumberAnimation { duration: Theme.sheet }
        }
    }

    enter: Transition {
        NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.sheet }
    }
    exit: Transition {
        NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.sheet }
    }

    background: Rectangle {
        color: Theme.b2
        radius: Theme.sheetRadius
        border.width: Theme.hairline
        border.color: Theme.line2
    }

    contentItem: FocusScope {
        id: scope

        function pressDefault(event: var) {
            if (control.defaultButton && control.defaultButton.enabled && !event.isAutoRepeat) {
                Buttons.click(control.defaultButton);
            }
        }

        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: control.name
        Keys.onEscapePressed: event => {
            if (!event.isAutoRepeat) {
                control.escaped();
            }
        }
        Keys.onReturnPressed: event => scope.pressDefault(event)
        Keys.onEnterPressed: event => scope.pressDefault(event)

        Item {
            id: head

            visible: control.hasHead
            width: parent.width
            height: visible ? control.headHeight : 0

            Button {
                id: back

                objectName: control.objectName + ".back"
                anchors.left: parent.left
                anchors.leftMargin: Theme.s12
                anchors.verticalCenter: parent.verticalCenter
                visible: control.backText !== ""
                leftPadding: Theme.s4
                rightPadding: Theme.s8
                kind: Button.Bare
                muted: true
                symbol: "chevron.left"
                iconSize: Theme.icon
                spacing: Theme.s4
                text: control.backText
                onClicked: control.backed()
            }
            Label {
                anchors.left: back.visible ? back.right : parent.left
                anchors.leftMargin: back.visible ? Theme.s8 : Theme.sheetPadding
                anchors.right: parent.right
                anchors.rightMargin: Theme.sheetPadding
                anchors.verticalCenter: parent.verticalCenter
                text: control.title
                type: Theme.head
                Accessible.role: Accessible.Heading
            }
            Divider {
                anchors.bottom: parent.bottom
                width: parent.width
                visible: control.hasHeadLine
            }
        }

        Item {
            id: body

            anchors.top: head.bottom
            anchors.bottom: footArea.top
            width: parent.width
            implicitWidth: childrenRect.width
            // Content of a sheet whose height is given may take the body's height itself.
            implicitHeight: control.sheetHeight > 0 ? 0 : childrenRect.height
        }

        Item {
            id: footArea

            anchors.bottom: parent.bottom
            visible: control.hasFoot
            width: parent.width
            height: visible ? Theme.sheetFootHeight : 0

            Divider {
                width: parent.width
            }
            Row {
                id: footRow

                anchors.right: parent.right
                anchors.rightMargin: Theme.sheetPadding
                anchors.verticalCenter: parent.verticalCenter
                spacing: Theme.buttonGap
            }
        }
    }
}
