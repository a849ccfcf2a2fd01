// Stage `done`: the counts of the run and its failures.
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Import
import Corvane.Kit

ImportStage {
    id: stage

    readonly property bool hasFailures: list.count > 0

    sheetHeight: chrome + column.implicitHeight + 2 * column.y
    defaultButton: more
    footer: Row {
        spacing: Theme.buttonGap

        Button {
            objectName: "import.finish"
            large: true
            text: qsTr("Done — Review")
            onClicked: stage.sheet.dismiss()
        }
        Button {
            id: more

            objectName: "import.more"
            large: true
            kind: Button.Primary
            text: qsTr("Import more footage")
            onClicked: stage.sheet.startAgain()
        }
    }

    Column {
        id: column

        x: Theme.sheetPadding
        y: Theme.spacing16
        width: parent.width - 2 * x
        spacing: Theme.spacing6

        Repeater {
            model: stage.sheet.result.counters

            Item {
                id: counter

                required property var modelData

                objectName: "import.counter." + modelData.kind
                width: column.width
                height: Theme.checkBoxRowHeight
                Accessible.role: Accessible.StaticText
                Accessible.name: modelData.text

                Icon {
                    id: glyph

                    anchors.verticalCenter: parent.verticalCenter
                    symbol: counter.modelData.symbol
                    color: counter.modelData.kind === "succeeded" ? Theme.success
                         : counter.modelData.kind === "failed" ? Theme.danger : Theme.secondaryText
                }
                Label {
                    anchors.left: glyph.right
                    anchors.leftMargin: Theme.spacing8
                    anchors.verticalCenter: parent.verticalCenter
                    text: counter.modelData.text
                    Accessible.ignored: true
                }
            }
        }

        Label {
            objectName: "import.doneNotice"
            width: parent.width
            visible: text !== ""
            text: stage.sheet.result.notice
            muted: true
            wrapMode: Text.Wrap
        }

        Disclosure {
            id: details

            objectName: "import.details"
            width: parent.width
            visible: stage.hasFailures
            text: qsTr("Show details")

            Rectangle {
                width: parent.width
                height: list.height + 2 * Theme.spacing8
                radius: Theme.panelRadius
                color: Theme.windowBackground

                FocusRing {
                    visible: list.activeFocus
                    cornerRadius: Theme.panelRadius
                }
                ImportFailures {
                    id: list

                    y: Theme.spacing8
                    width: parent.width
                    height: Math.min(contentHeight, Theme.importFailuresHeight)
                    model: stage.sheet.result.failures
                }
            }
        }
    }
}
