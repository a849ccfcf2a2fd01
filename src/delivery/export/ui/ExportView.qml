// The sheet of an export: one of three views, depending on the stage.
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
