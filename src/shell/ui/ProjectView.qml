// An open project: its header over its clips.
//   app: the application
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit
import Corvane.Shell

FocusScope {
    id: root

    required property CorvaneApp app

    objectName: "project"
    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: app.header.projectName

    HeaderBar {
        id: header

        width: parent.width
        header: root.app.header
        onClosed: root.app.commands.command("closeProject").trigger()
        onImportWanted: root.app.commands.command("import").trigger()
        onExportWanted: root.app.commands.command("export").trigger()
        onHandoffWanted: root.app.commands.command("selectsHandoff").trigger()
        onGuideWanted: root.app.commands.command("help").trigger()
    }

    ListView {
        objectName: "project.clips"
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        clip: true
        focus: true
        topMargin: Theme.s6
        model: root.app.header.clipNames
        boundsBehavior: Flickable.StopAtBounds
        T.ScrollBar.vertical: ScrollBar {}
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Clips")

        delegate: Label {
            required property string modelData

            x: Theme.regionPadding
            width: ListView.view.width - 2 * x
            height: Theme.previewRowHeight
            verticalAlignment: Text.AlignVCenter
            text: modelData
            type: Theme.listName
            Accessible.role: Accessible.ListItem
        }
    }
}
