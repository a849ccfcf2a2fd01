// The user guide, or the reason why it can't be shown.
//   help: the guide
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Shell

FocusScope {
    id: root

    required property HelpDocument help

    objectName: "helpView"
    focus: true
    Component.onCompleted: help.load()

    Label {
        objectName: "helpView.error"
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.helpPadding
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        visible: text !== ""
        text: root.help.loadError
    }

    Spinner {
        objectName: "helpView.loading"
        anchors.centerIn: parent
        running: root.help.isLoading
        name: qsTr("Loading the guide")
    }

    ReadingList {
        id: list

        objectName: "helpView.guide"
        anchors.fill: parent
        focus: true
        topMargin: Theme.helpPadding
        bottomMargin: Theme.helpPadding
        visible: !root.help.isLoading && root.help.loadError === ""
        model: root.help
        cacheBuffer: 100000 // all blocks, so that the content height is exact
        name: root.help.windowTitle
        step: Theme.helpScrollStep
        page: height - 2 * Theme.helpPadding
        Accessible.role: Accessible.Document
        Keys.onSpacePressed: scrollBy(page)

        delegate: HelpLine {
            x: Theme.helpPadding
            width: list.width - 2 * Theme.helpPadding
            onLinkActivated: address => root.help.openLink(address)
        }
    }
}
