// Chips in a row that wraps at the item's width.
import QtQuick
import Corvane.Kit

Flow {
    spacing: Theme.chipGap
}
