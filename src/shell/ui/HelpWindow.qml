// The window of the user guide, or of the reason why it can't be shown. It has no menus.
//   help: the guide
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Shell

AppWindow {
    id: window

    required property HelpDocument help

    objectName: help.windowId
    title: help.windowTitle
    width: Theme.helpWidth
    height: Theme.helpHeight
    minimumWidth: Theme.helpMinWidth
    minimumHeight: Theme.helpMinHeight
    Component.onCompleted: help.load()

    FocusScope {
        objectName: "helpView"
        anchors.fill: parent
        focus: true

        Label {
            objectName: "helpView.error"
            anchors.centerIn: parent
            width: parent.width - 2 * Theme.helpPadding
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            visible: text !== ""
            text: window.help.loadError
        }

        Spinner {
            objectName: "helpView.loading"
            anchors.centerIn: parent
            running: window.help.isLoading
            name: qsTr("Loading the guide")
        }

        ReadingList {
            id: list

            objectName: "helpView.guide"
            anchors.fill: parent
            focus: true
            topMargin: Theme.helpPadding
            bottomMargin: Theme.helpPadding
            visible: !window.help.isLoading && window.help.loadError === ""
            model: window.help
            cacheBuffer: 100000 // all blocks, so that the content height is exact
            name: window.help.windowTitle
            step: Theme.helpScrollStep
            page: height - 2 * Theme.helpPadding
            Accessible.role: Accessible.Document
            Keys.onSpacePressed: scrollBy(page)

            delegate: HelpLine {
                x: Theme.helpPadding
                width: list.width - 2 * Theme.helpPadding
            }

            HelpSelection {
                id: selection

                parent: list.contentItem
                z: 1
                blocks: list
                onLinkActivated: address => window.help.openLink(address)
                onSelectedTextChanged: window.help.noteSelection(selectedText)
                onMenuRequested: menu.popup()
            }
        }

        PopUpMenu {
            id: menu

            objectName: "helpView.menu"
            name: qsTr("Text")

            MenuItem {
                objectName: "helpView.copy"
                text: qsTr("Copy")
                mnemonic: 0
                shortcutText: Format.keys("Ctrl+C")
                enabled: selection.selectedText !== ""
                onTriggered: window.help.copy(selection.selectedText)
            }
            MenuItem {
                objectName: "helpView.selectAll"
                text: qsTr("Select All")
                mnemonic: 7
                shortcutText: Format.keys("Ctrl+A")
                onTriggered: selection.selectAll()
            }
        }

        Shortcut {
            sequences: [StandardKey.Copy]
            onActivated: window.help.copy(selection.selectedText)
        }

        Shortcut {
            sequences: [StandardKey.SelectAll]
            onActivated: selection.selectAll()
        }
    }
}
