// The sheet of a handoff over the window, up while its state says so: one of three, by the stage.
//   screen: HandoffScreenState
import QtQuick
import Corvane.Handoff

Item {
    id: view

    required property HandoffScreenState screen

    objectName: "handoff"

    HandoffConfigureStageView {
        handoff: view.screen
    }
    HandoffRunningStageView {
        screen: view.screen
    }
    HandoffDoneStageView {
        screen: view.screen
    }
}
