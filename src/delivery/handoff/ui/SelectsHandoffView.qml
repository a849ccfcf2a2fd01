// The sheet of a handoff over the window, up while its state says so: one of three, by the stage.
//   sheet: HandoffSheet
import QtQuick
import Corvane.Handoff

Item {
    id: view

    required property HandoffSheet sheet

    objectName: "handoff"

    HandoffConfigureStageView {
        handoff: view.sheet
    }
    HandoffRunningStageView {
        sheet: view.sheet
    }
    HandoffDoneStageView {
        sheet: view.sheet
    }
}
