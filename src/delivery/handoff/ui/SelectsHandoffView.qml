// The sheet of a handoff: one of three views, depending on the stage.
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
