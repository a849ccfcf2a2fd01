// The form for a new project.
//   app: the application
import QtQuick
import Corvane.Kit
import Corvane.Shell

FocusScope {
    id: root

    required property CorvaneApp app
    readonly property ProjectSetup setup: app.setup

    objectName: "setup"
    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: heading.text

    FocusFlickable {
        anchors.fill: parent
        contentHeight: form.height + Theme.setupTopMargin + Theme.spacing48
        focusMargin: Theme.formGap

        Column {
            id: form

            anchors.horizontalCenter: parent.horizontalCenter
            y: Theme.setupTopMargin
            width: Theme.setupWidth
            spacing: Theme.formGap

            Row {
                x: -Theme.spacing8
                height: Theme.controlHeight + Theme.formGap
                spacing: Theme.spacing4

                Button {
                    objectName: "setup.back"
                    kind: Button.Bare
                    muted: true
                    leftPadding: Theme.spacing4
                    rightPadding: Theme.spacing8
                    spacing: Theme.spacing4
                    symbol: "chevron.left"
                    text: qsTr("Back")
                    onClicked: root.app.router.leaveSetup()
                }

                Label {
                    id: heading

                    objectName: "setup.title"
                    height: Theme.controlHeight
                    verticalAlignment: Text.AlignVCenter
                    text: qsTr("New Project")
                    textStyle: Theme.titleStyle
                }
            }

            LabelledRow {
                label: qsTr("Project name")
                required: true

                TextField {
                    objectName: "setup.projectName"
                    name: qsTr("Project name")
                    placeholderText: "MyShoot"
                    focus: true
                    text: root.setup.projectName
                    onTextEdited: root.setup.projectName = text
                }
            }

            LabelledRow {
                label: qsTr("Shoot date")

                Row {
                    spacing: Theme.spacing16
                    height: Theme.controlHeight

                    CheckBox {
                        objectName: "setup.includeShootDate"
                        anchors.verticalCenter: parent.verticalCenter
                        text: qsTr("Include")
                        checked: root.setup.includeShootDate
                        onToggled: root.setup.includeShootDate = checked
                    }

                    DateField {
                        objectName: "setup.shootDate"
                        name: qsTr("Shoot date")
                        visible: root.setup.includeShootDate
                        date: root.setup.shootDate
                        onEdited: date => root.setup.shootDate = date
                    }
                }
            }

            LabelledRow {
                label: qsTr("Client or series")

                TextField {
                    objectName: "setup.clientOrSeries"
                    name: qsTr("Client or series")
                    placeholderText: qsTr("Optional")
                    text: root.setup.clientOrSeries
                    onTextEdited: root.setup.clientOrSeries = text
                }
            }

            LabelledRow {
                label: qsTr("Location")

                TextField {
                    objectName: "setup.location"
                    name: qsTr("Location")
                    placeholderText: qsTr("Optional")
                    text: root.setup.location
                    onTextEdited: root.setup.location = text
                }
            }

            LabelledRow {
                label: qsTr("Notes")

                TextArea {
                    objectName: "setup.notes"
                    name: qsTr("Notes")
                    text: root.setup.notes
                    onTextEdited: root.setup.notes = text
                }
            }

            LabelledRow {
                label: qsTr("File layout")

                CheckBox {
                    objectName: "setup.createProjectFolder"
                    height: Theme.controlHeight
                    text: qsTr("Create project folder")
                    checked: root.setup.createProjectFolder
                    onToggled: root.setup.createProjectFolder = checked
                }

                Label {
                    width: Theme.formWidth
                    height: implicitHeight + Theme.spacing8
                    text: qsTr("Wraps the .corvane file in a folder named after the project. Recommended.")
                    textStyle: Theme.listStyle
                    muted: true
                }

                Rectangle {
                    width: Theme.formWidth
                    height: Theme.layoutPreviewHeight
                    radius: Theme.controlRadius
                    color: Theme.panelBackground
                    clip: true

                    Label {
                        objectName: "setup.layoutPreview"
                        x: Theme.regionPadding
                        y: (parent.height - 4 * textStyle.lineHeight) / 2
                        width: parent.width - 2 * x
                        text: root.setup.layoutPreview
                        maximumLineCount: 4
                        textStyle: Theme.layoutPreviewStyle
                        muted: true
                        lineHeightMode: Text.FixedHeight
                        lineHeight: Theme.layoutPreviewStyle.lineHeight
                        topPadding: Theme.layoutPreviewStyle.leading
                    }
                }
            }

            Item {
                id: footer

                width: parent.width
                height: buttons.y + buttons.height

                Divider { // aligned to device pixels
                    y: Math.ceil(footer.y + Theme.spacing12) - footer.y
                    width: parent.width
                }

                Row {
                    id: buttons

                    anchors.right: parent.right
                    y: Theme.spacing12 + Theme.spacing16
                    spacing: Theme.buttonGap

                    Button {
                        objectName: "setup.cancel"
                        large: true
                        text: qsTr("Cancel")
                        onClicked: root.app.router.leaveSetup()
                    }

                    Button {
                        objectName: "setup.create"
                        kind: Button.Primary
                        large: true
                        text: qsTr("Create project")
                        enabled: root.setup.canCreate
                        onClicked: root.setup.create()
                    }
                }
            }
        }
    }
}
