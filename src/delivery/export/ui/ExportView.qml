// The sheet of an export over the window, up while its state says so: one of three, by the stage.
//   sheet: ExportSheet
import QtQuick
import Corvane.Export

Item {
    id: view

    required property ExportSheet sheet

    objectName: "export"

    ExportConfigureStageView {
        exporting: view.sheet
    }
    ExportRunningStageView {
        sheet: view.sheet
    }
    ExportDoneStageView {
        sheet: view.sheet
    }
}
