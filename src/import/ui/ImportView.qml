// The import sheet. Its content follows the stage; only ImportSheet opens and closes it.
//   sheet: ImportSheet
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Import
import Corvane.Kit

Item {
    id: root

    required property ImportSheet sheet
    readonly property bool isRunning: sheet.stage === "importing"
    readonly property ImportStage current: loader.item as ImportStage

    objectName: "import"
    Component.onCompleted: panel.follow()

    Connections {
        target: root.sheet

        function onStageChanged() {
            panel.follow();
        }
    }

    // All stages share a scrim: separate scrims would flicker when the stage changes.
    T.Popup {
        parent: T.Overlay.overlay
        visible: root.sheet.isOpen
        z: -1
        modal: true
        closePolicy: T.Popup.NoAutoClose

        T.Overlay.modal: Scrim {}

        exit: Transition { // as long as that of the sheets
            NumberAnimation { duration: Theme.sheetDuration }
        }
    }

    Sheet {
        id: panel

        // Stays at the previous stage during a run, which has a sheet of its own.
        property string shownStage: "sources"

        function follow() {
            if (!root.isRunning) {
                title = root.sheet.title;
                backText = root.sheet.backText;
                shownStage = root.sheet.stage;
            }
        }

        objectName: "import.sheet"
        dim: false
        visible: root.sheet.isOpen && !root.isRunning
        maximumMargin: 2 * Theme.spacing32
        sheetWidth: root.current ? root.current.sheetWidth : Theme.importSmallSheetWidth
        sheetHeight: root.current ? root.current.sheetHeight : Theme.importSourcesHeight
        defaultButton: root.current ? root.current.defaultButton : null
        initialFocus: root.current ? root.current.initialFocus : null
        onEscapePressed: root.sheet.escape()
        onBackClicked: root.sheet.back()

        footer: Item {
            id: slot

            width: root.current ? root.current.footer.width : 0
            height: root.current ? root.current.footer.height : 0
        }

        Loader {
            id: loader

            width: panel.availableWidth
            height: panel.height - Theme.sheetHeaderHeight - Theme.sheetFooterHeight
                    - 2 * Theme.hairline
            sourceComponent: {
                switch (panel.shownStage) {
                case "scanning":
                    return scanning;
                case "results":
                    return results;
                case "done":
                    return done;
                default:
                    return sources;
                }
            }
            onLoaded: {
                for (let i = 0; i < slot.children.length; ++i) {
                    slot.children[i].visible = false; // of a former stage, which is deleted later
                }
                root.current.footer.parent = slot;
                if (panel.visible && root.current.initialFocus) {
                    root.current.initialFocus.forceActiveFocus(Qt.OtherFocusReason);
                }
            }
        }
    }

    ImportRunningView {
        sheet: root.sheet
        dim: false
        visible: root.sheet.isOpen && root.isRunning
    }

    Component {
        id: sources

        ImportSourcesView { sheet: root.sheet }
    }
    Component {
        id: scanning

        ImportScanningView { sheet: root.sheet }
    }
    Component {
        id: results

        ImportResultsView { sheet: root.sheet }
    }
    Component {
        id: done

        ImportDoneView { sheet: root.sheet }
    }
}
