// A modal sheet: a header with its title, its content, and a footer with its buttons. A click
// outside does nothing, and Esc only emits `escapePressed`.
//   title: string; headerHeight: int; hasHeaderDivider: bool; name: string (its accessible name, by
//   default the title); backText: string (a "Back" button in the header if not empty); sheetWidth:
//   real; sheetHeight: real, 0 for the height of its content; maximumMargin: real (space kept free
//   around it); default content: items, laid out by the owner in `body`; footer: items, in a row at
//   the right; defaultButton: the button that Return presses; initialFocus: Item; signals
//   escapePressed(), backClicked(); a Popup otherwise
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

ModalPopup {
    id: control

    property string title
    property string name: title
    property string backText
    property int headerHeight: Theme.sheetHeaderHeight
    property bool hasHeaderDivider: true
    property real sheetWidth: implicitContentWidth
    property real sheetHeight: 0
    property real maximumMargin: Theme.spacing48
    property T.AbstractButton defaultButton: null
    property Item initialFocus: defaultButton
    default property alias content: body.data
    property alias footer: footerRow.data
    readonly property alias body: body
    readonly property bool hasHeader: title !== "" || backText !== ""

    signal escapePressed()
    signal backClicked()

    anchors.centerIn: parent
    padding: Theme.hairline
    width: Math.min(sheetWidth, parent ? parent.width - maximumMargin : sheetWidth)
    height: Math.min(sheetHeight > 0 ? sheetHeight : implicitHeight,
                     parent ? parent.height - maximumMargin : implicitHeight)
    implicitHeight: (hasHeader ? headerHeight : 0) + body.implicitHeight
                    + Theme.sheetFooterHeight + topPadding + bottomPadding
    onOpened: {
        if (initialFocus) {
            initialFocus.forceActiveFocus(Qt.OtherFocusReason);
        }
    }

    background: BorderedPanel {
        color: Theme.panelBackground
        radius: Theme.sheetRadius
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
                control.escapePressed();
            }
        }
        Keys.onReturnPressed: event => scope.pressDefault(event)
        Keys.onEnterPressed: event => scope.pressDefault(event)

        Item {
            id: header

            visible: control.hasHeader
            width: parent.width
            height: visible ? control.headerHeight : 0

            Button {
                id: back

                objectName: control.objectName + ".back"
                anchors.left: parent.left
                anchors.leftMargin: Theme.spacing12
                anchors.verticalCenter: parent.verticalCenter
                visible: control.backText !== ""
                leftPadding: Theme.spacing4
                rightPadding: Theme.spacing8
                kind: Button.Bare
                muted: true
                symbol: "chevron.left"
                iconSize: Theme.iconSize
                spacing: Theme.spacing4
                text: control.backText
                onClicked: control.backClicked()
            }
            Label {
                anchors.left: back.visible ? back.right : parent.left
                anchors.leftMargin: back.visible ? Theme.spacing8 : Theme.sheetPadding
                anchors.right: parent.right
                anchors.rightMargin: Theme.sheetPadding
                anchors.verticalCenter: parent.verticalCenter
                text: control.title
                textStyle: Theme.headingStyle
                Accessible.role: Accessible.Heading
            }
            Divider {
                anchors.bottom: parent.bottom
                width: parent.width
                visible: control.hasHeaderDivider
            }
        }

        Item {
            id: body

            anchors.top: header.bottom
            anchors.bottom: footerArea.top
            width: parent.width
            implicitWidth: childrenRect.width
            // With a fixed height, content may depend on the body's height: avoid the binding loop.
            implicitHeight: control.sheetHeight > 0 ? 0 : childrenRect.height
        }

        Item {
            id: footerArea

            anchors.bottom: parent.bottom
            width: parent.width
            height: Theme.sheetFooterHeight

            Divider {
                width: parent.width
            }
            Row {
                id: footerRow

                anchors.right: parent.right
                anchors.rightMargin: Theme.sheetPadding
                anchors.verticalCenter: parent.verticalCenter
                spacing: Theme.buttonGap
            }
        }
    }
}
