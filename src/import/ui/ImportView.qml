// The import: one sheet whose content follows the stage. It comes and goes as its state says, and
// nothing else takes it away.
//   screen: the sheet's state
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Import
import Corvane.Kit

Item {
    id: root

    required property ImportSheet screen
    readonly property bool runs: screen.stage === ImportSheet.Importing
    readonly property ImportStage current: loader.item as ImportStage

    objectName: "import"
    Component.onCompleted: sheet.follow()

    Connections {
        target: root.screen

        function onStageChanged() {
            sheet.follow();
        }
    }

    // One scrim under all stages: were it each sheet's own, it would flicker between them.
    T.Popup {
        parent: T.Overlay.overlay
        visible: root.screen.isOpen
        z: -1
        modal: true
        closePolicy: T.Popup.NoAutoClose

        T.Overlay.modal: Scrim {}

        exit: Transition { // as long as the sheets take to go
            NumberAnimation { duration: Theme.sheetDuration }
        }
    }

    Sheet {
        id: sheet

        // A run has a sheet of its own; this one goes as it was.
        property int shownStage: ImportSheet.Sources

        function follow() {
            if (!root.runs) {
                title = root.screen.title;
                backText = root.screen.backText;
                shownStage = root.screen.stage;
            }
        }

        objectName: "import.sheet"
        dim: false
        visible: root.screen.isOpen && !root.runs
        maximumMargin: 2 * Theme.spacing32
        sheetWidth: root.current ? root.current.sheetWidth : Theme.importSmallSheetWidth
        sheetHeight: root.current ? root.current.sheetHeight : Theme.importSourcesHeight
        defaultButton: root.current ? root.current.defaultButton : null
        initialFocus: root.current ? root.current.initialFocus : null
        onEscapePressed: root.screen.escape()
        onBackClicked: root.screen.back()

        footer: Item {
            id: slot

            width: root.current ? root.current.footer.width : 0
            height: root.current ? root.current.footer.height : 0
        }

        Loader {
            id: loader

            width: sheet.availableWidth
            height: sheet.height - Theme.sheetHeaderHeight - Theme.sheetFooterHeight
                    - 2 * Theme.hairline
            sourceComponent: {
                switch (sheet.shownStage) {
                case ImportSheet.Scanning:
                    return scanning;
                case ImportSheet.Results:
                    return results;
                case ImportSheet.Done:
                    return done;
                default:
                    return sources;
                }
            }
            onLoaded: {
                root.current.footer.parent = slot;
                if (sheet.visible && root.current.initialFocus) {
                    root.current.initialFocus.forceActiveFocus(Qt.OtherFocusReason);
                }
            }
        }
    }

    ImportRunningView {
        screen: root.screen
        dim: false
        visible: root.screen.isOpen && root.runs
    }

    Component {
        id: sources

        ImportSourcesView { screen: root.screen }
    }
    Component {
        id: scanning

        ImportScanningView { screen: root.screen }
    }
    Component {
        id: results

        ImportResultsView { screen: root.screen }
    }
    Component {
        id: done

        ImportDoneView { screen: root.screen }
    }
}
