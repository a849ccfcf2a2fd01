// Every symbol of the icon table.
import QtQuick
import Corvane.Kit

GallerySection {
    title: "Icons"

    Grid {
        columns: 7

        Repeater {
            model: IconTable.symbols

            Row {
                id: cell

                required property string modelData

                width: 197
                height: 32
                spacing: Theme.spacing8

                Icon {
                    anchors.verticalCenter: parent.verticalCenter
                    symbol: cell.modelData
                    size: Theme.brandIconSize
                    color: Theme.primaryText
                }
                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    text: cell.modelData
                    textStyle: Theme.smallStyle
                    muted: true
                }
            }
        }
    }
}
