// The content of the sheet at one stage.
//   sheet: ImportSheet; footer: the items at the right of the footer; defaultButton: pressed by Return;
//   initialFocus: focused when the stage appears; sheetWidth, sheetHeight: real
import QtQuick
import QtQuick.Templates as T
import Corvane.Import
import Corvane.Kit

Item {
    required property ImportSheet sheet
    property Item footer
    property T.AbstractButton defaultButton
    property Item initialFocus: defaultButton
    property real sheetWidth: Theme.importSmallSheetWidth
    property real sheetHeight: Theme.importSourcesHeight
    readonly property real chrome: Theme.sheetHeaderHeight + Theme.sheetFooterHeight + 2 * Theme.hairline
}
