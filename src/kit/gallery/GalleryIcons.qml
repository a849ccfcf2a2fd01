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
                spacing: Theme.s8

                Icon {
                    anchors.verticalCenter: parent.verticalCenter
                    symbol: cell.modelData
                    size: Theme.iconBrand
                    color: Theme.t1
                }
                Label {
                    anchors.verticalCenter: parent.verticalCenter
                    text: cell.modelData
                    type: Theme.small
                    muted: true
                }
            }
        }
    }
}
