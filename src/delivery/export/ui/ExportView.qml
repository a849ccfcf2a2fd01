// The sheet of an export over the window, up while its state says so: one of three, by the stage.
//   screen: ExportScreenState
import QtQuick
import Corvane.Delivery
import Corvane.Export

Item {
    id: view

    required property ExportScreenState screen

    objectName: "export"

    ExportConfigureStageView {
        exporting: view.screen
    }
    ExportRunningStageView {
        screen: view.screen
    }
    ExportDoneStageView {
        screen: view.screen
    }
}
