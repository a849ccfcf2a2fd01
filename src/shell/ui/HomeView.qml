// The screen without an open project: create a project or open one.
//   app: the application
import QtQuick
import Corvane.Kit
import Corvane.Shell

FocusScope {
    id: root

    required property CorvaneApp app

    objectName: "home"
    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: app.productName

    Item {
        id: column

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.top
        anchors.topMargin: Theme.homeTopMargin
        anchors.bottom: parent.bottom
        width: Math.min(Theme.homeWidth, parent.width - 2 * Theme.spacing48)

        Label {
            id: name

            objectName: "home.name"
            text: root.app.productName
            textStyle: Theme.productNameStyle
        }

        Label {
            id: version

            objectName: "home.version"
            anchors.top: name.bottom
            anchors.topMargin: Theme.spacing2
            text: root.app.versionText
            muted: true
        }

        Row {
            id: buttons

            anchors.top: version.bottom
            anchors.topMargin: Theme.spacing24
            spacing: Theme.buttonGap
            Keys.onDownPressed: {
                if (recents.visible) {
                    recents.forceActiveFocus(Qt.TabFocusReason);
                }
            }

            Button {
                objectName: "home.newProject"
                readonly property AppCommand command: root.app.commands.command("newProject")

                kind: Button.Primary
                large: true
                symbol: "plus"
                text: command.label
                focus: true
                onClicked: command.trigger()
            }

            Button {
                objectName: "home.openProject"
                readonly property AppCommand command: root.app.commands.command("openProject")

                large: true
                text: command.label
                onClicked: command.trigger()
            }
        }

        Label {
            id: heading

            anchors.top: buttons.bottom
            anchors.topMargin: Theme.spacing48
            text: qsTr("Recent Projects")
            textStyle: Theme.headingStyle
        }

        RecentList {
            id: recents

            anchors.top: heading.bottom
            anchors.topMargin: Theme.spacing8
            anchors.bottom: parent.bottom
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.leftMargin: -Theme.recentOverhang
            anchors.rightMargin: -Theme.recentOverhang
            visible: root.app.recents.count > 0
            recents: root.app.recents
            onCountChanged: {
                if (count === 0 && activeFocus) {
                    leftUpwards();
                }
            }
            onLeftUpwards: buttons.children[0].forceActiveFocus(Qt.BacktabFocusReason)
        }

        BorderedPanel {
            objectName: "home.empty"
            anchors.top: heading.bottom
            anchors.topMargin: Theme.spacing12
            anchors.left: parent.left
            anchors.right: parent.right
            height: texts.height + 2 * Theme.spacing32
            visible: root.app.recents.count === 0
            color: Theme.transparent

            Column {
                id: texts

                x: Theme.spacing24
                y: Theme.spacing32
                width: parent.width - 2 * Theme.spacing24
                spacing: Theme.spacing4

                Label {
                    width: parent.width
                    text: qsTr("No recent projects")
                    textStyle: Theme.bodyLabelStyle
                }

                Label {
                    width: parent.width
                    text: qsTr("Click New Project to start, or Open Project… to load an existing one.")
                    muted: true
                }
            }
        }
    }
}
