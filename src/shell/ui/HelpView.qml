// The user guide, a block for each of its lines; or why there is none.
//   help: the guide
// Qt 6.4 has no way to say that a delegate knows what surrounds it.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit
import Corvane.Shell

FocusScope {
    id: root

    required property HelpDocument help

    objectName: "helpView"
    focus: true
    Component.onCompleted: help.load()

    function scrollBy(step: real) {
        const top = list.originY - list.topMargin;
        const bottom = list.originY + list.contentHeight + list.bottomMargin - list.height;
        list.contentY = Math.max(top, Math.min(bottom, list.contentY + step));
    }

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

    ListView {
        id: list

        objectName: "helpView.guide"
        anchors.fill: parent
        focus: true
        topMargin: Theme.helpPadding
        bottomMargin: Theme.helpPadding
        visible: !root.help.isLoading && root.help.loadError === ""
        model: root.help
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: 100000 // all of it, so that its height is known
        T.ScrollBar.vertical: ScrollBar {}
        Accessible.role: Accessible.Document
        Accessible.name: root.help.windowTitle
        Keys.onPressed: event => {
            const page = height - 2 * Theme.helpPadding;
            const steps = {
                [Qt.Key_Up]: -Theme.helpScrollStep,
                [Qt.Key_Down]: Theme.helpScrollStep,
                [Qt.Key_PageUp]: -page,
                [Qt.Key_PageDown]: page,
                [Qt.Key_Space]: page,
                [Qt.Key_Home]: -contentHeight,
                [Qt.Key_End]: contentHeight
            };
            if (event.key in steps) {
                root.scrollBy(steps[event.key]);
                event.accepted = true;
            }
        }

        delegate: HelpLine {
            x: Theme.helpPadding
            width: list.width - 2 * Theme.helpPadding
            onLinkActivated: address => root.help.openLink(address)
        }
    }
}
