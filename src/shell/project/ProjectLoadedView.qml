// The screen of an open project: header and review, with sheets and alerts above them.
//   app: CorvaneApp; screen: ProjectScreen
import QtQuick
import Corvane.Export
import Corvane.Handoff
import Corvane.Import
import Corvane.Kit
import Corvane.Project
import Corvane.Review
import Corvane.Shell

FocusScope {
    id: root

    required property CorvaneApp app
    required property ProjectScreen screen
    readonly property ReviewScreenState review: screen ? screen.review : null

    objectName: "project"
    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: app.header.projectName
    Component.onCompleted: review.appear()
    Component.onDestruction: review.disappear()

    Keys.onPressed: event => {
        event.accepted = root.screen.handleKey(event.key, event.modifiers, event.isAutoRepeat);
    }

    // An invisible item that has the focus if no control has it.
    Item {
        id: keys

        objectName: "project.keys"
        focus: true
        onActiveFocusChanged: {
            if (root.screen) { // null during creation and destruction
                root.review.panes.keyboardFocused = activeFocus;
            }
        }
    }

    Connections {
        target: root.review.panes

        function onKeyboardFocusedChanged() {
            if (root.review.panes.keyboardFocused) {
                keys.forceActiveFocus(Qt.OtherFocusReason);
            }
        }
    }

    ProjectHeaderBar {
        id: header

        width: parent.width
        header: root.app.header
        onCommandWanted: commandId => root.app.commands.command(commandId).trigger()
    }

    ReviewPanes {
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        review: root.review
        engine: root.screen.engine
        banners: root.screen.banners
        onFocusLeft: keys.forceActiveFocus(Qt.OtherFocusReason)
    }

    DropArea { // the window accepts project files
        anchors.fill: parent
        keys: ["text/uri-list"]
        onEntered: drag => drag.accepted = root.screen.canImportDropped(drag.urls)
        onDropped: drop => root.screen.importDropped(drop.urls)
    }

    ImportView {
        sheet: root.screen.importing
    }

    ExportView {
        sheet: root.screen.exporting
    }

    SelectsHandoffView {
        sheet: root.screen.handoff
    }

    Alert {
        objectName: "confirmation"
        destructive: true
        subject: root.review.confirmation
        onAccepted: root.review.answerConfirmation(true)
        onRejected: root.review.answerConfirmation(false)
    }
}
