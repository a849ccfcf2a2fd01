// What one stage of an import puts into the sheet.
//   screen: the sheet's state; footer: the items at the right of the sheet's footer; defaultButton: what
//   Return presses; initialFocus: what has the focus when the stage comes; sheetWidth, sheetHeight: real
import QtQuick
import QtQuick.Templates as T
import Corvane.Import
import Corvane.Kit

Item {
    required property ImportSheet screen
    property Item footer
    property T.AbstractButton defaultButton
    property Item initialFocus: defaultButton
    property real sheetWidth: Theme.importSmallSheetWidth
    property real sheetHeight: Theme.importSourcesHeight
    readonly property real chrome: Theme.sheetHeaderHeight + Theme.sheetFooterHeight + 2 * Theme.hairline
}
