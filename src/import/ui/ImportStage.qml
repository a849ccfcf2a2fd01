// What one stage of an import puts into the sheet.
//   screen: the sheet's state; foot: what stands at the right of the sheet's foot; defaultButton: what
//   Return presses; initialFocus: what has the focus when the stage comes; sheetWidth, sheetHeight: real
import QtQuick
import QtQuick.Templates as T
import Corvane.Import
import Corvane.Kit

Item {
    required property ImportScreenState screen
    property Item foot
    property T.AbstractButton defaultButton
    property Item initialFocus: defaultButton
    property real sheetWidth: Theme.importSmallWidth
    property real sheetHeight: Theme.importSourcesHeight
    readonly property real chrome: Theme.sheetHeadHeight + Theme.sheetFootHeight + 2 * Theme.hairline
}
