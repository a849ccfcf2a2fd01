// The compact sheet of a run: the file in progress, the progress and a button that cancels. Esc
// presses the button.
//   title: string; fileName: string; figure: string (a count or percentage at the right);
//   figureIsStrong: bool (emphasizes `figure`); fraction: real, 0 to 1; details, timeLeft: string
//   (the line below the bar, left and right); buttonText: string; buttonEnabled: bool; signal
//   cancelled()
// Items are "<objectName>.file", ".figure", ".bar", ".details", ".timeLeft" and ".cancel".
import QtQuick
import Corvane.Kit

Sheet {
    id: control

    property string fileName
    property string figure
    property bool figureIsStrong: false
    property real fraction: 0
    property string details
    property string timeLeft
    property string buttonText: qsTr("Cancel")
    property bool buttonEnabled: true

    signal cancelled()

    sheetWidth: Theme.compactSheetWidth
    headerHeight: Theme.compactHeaderHeight
    hasHeaderDivider: false
    initialFocus: cancel
    onAboutToShow: bar.restart()
    onEscapePressed: {
        if (cancel.enabled) {
            cancelled();
        }
    }

    footer: Button {
        id: cancel

        objectName: control.objectName + ".cancel"
        large: true
        width: Math.max(implicitWidth, Theme.cancelButtonWidth)
        enabled: control.buttonEnabled
        text: control.buttonText
        onClicked: control.cancelled()
    }

    Item {
        width: control.availableWidth
        implicitHeight: Math.round(column.implicitHeight) + Theme.compactBottomPadding

        Column {
            id: column

            x: Theme.sheetPadding
            width: parent.width - 2 * x
            spacing: Theme.spacing8

            Item {
                width: parent.width
                height: file.implicitHeight

                Label {
                    id: file

                    objectName: control.objectName + ".file"
                    anchors.left: parent.left
                    anchors.right: figure.left
                    anchors.rightMargin: Theme.spacing16
                    text: control.fileName
                    textStyle: Theme.bodyLabelStyle
                    literal: true
                    HelpText.text: truncated ? text : ""
                }
                TabularLabel {
                    id: figure

                    objectName: control.objectName + ".figure"
                    anchors.right: parent.right
                    text: control.figure
                    textStyle: control.figureIsStrong ? Theme.bodyStrongStyle : Theme.bodyStyle
                    muted: !control.figureIsStrong
                }
            }

            ProgressBar {
                id: bar

                objectName: control.objectName + ".bar"
                width: parent.width
                value: control.fraction
                name: control.title
            }

            Item {
                width: parent.width
                height: details.implicitHeight

                TabularLabel {
                    id: details

                    objectName: control.objectName + ".details"
                    text: control.details
                    textStyle: Theme.listStyle
                    muted: true
                }
                TabularLabel {
                    objectName: control.objectName + ".timeLeft"
                    anchors.right: parent.right
                    text: control.timeLeft
                    textStyle: Theme.listStyle
                    muted: true
                }
            }
        }
    }
}
