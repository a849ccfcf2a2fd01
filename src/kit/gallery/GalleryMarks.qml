// Stars, badges, rows, the spinner, fields and a disclosure.
import QtQuick
import Corvane.Kit

Column {
    id: marks

    property int rating: 3
    property string day: "2025-06-13"

    GallerySection {
        width: parent.width
        title: "Stars, badges, flags"

        GalleryRow {
            title: "stars"

            Stars { anchors.verticalCenter: parent.verticalCenter; name: "No stars"; onRated: stars => rating = stars }
            Stars { anchors.verticalCenter: parent.verticalCenter; objectName: "stars"; rating: marks.rating; onRated: stars => marks.rating = stars }
        }
        GalleryRow {
            title: "hover on 4"

            Stars { anchors.verticalCenter: parent.verticalCenter; rating: 2; hoveredStar: 4 }
        }
        GalleryRow {
            title: "badges"

            Badge { anchors.verticalCenter: parent.verticalCenter; text: "S" }
            Badge { anchors.verticalCenter: parent.verticalCenter; text: "R" }
            Badge { anchors.verticalCenter: parent.verticalCenter; text: "X" }
            Badge { anchors.verticalCenter: parent.verticalCenter; text: "HD" }
            Icon { anchors.verticalCenter: parent.verticalCenter; symbol: "heart.fill"; size: Theme.markIconSize; color: Theme.favorite }
        }
    }

    GallerySection {
        width: parent.width
        title: "Rows, waiting, unfolding"

        Repeater {
            model: ["rest", "hover", "selected", "in the player"]

            RowBackground {
                required property string modelData
                required property int index

                width: parent ? parent.width : 0
                height: Theme.recentRowHeight
                showsHover: index === 1
                selected: index === 2
                current: index === 3

                Label {
                    x: Theme.spacing12
                    anchors.verticalCenter: parent.verticalCenter
                    text: parent.modelData
                    textStyle: Theme.listNameStyle
                }
            }
        }
        GalleryRow {
            title: "spinner"

            Spinner { anchors.verticalCenter: parent.verticalCenter; name: "Reading" }
        }
        GalleryRow {
            title: "day"

            DateField { anchors.verticalCenter: parent.verticalCenter; objectName: "day"; name: "Shoot date"; date: marks.day; onEdited: day => marks.day = day }
        }
        TextArea {
            objectName: "notes"
            width: parent.width
            name: "Notes"
            text: "Second unit joins at noon. Low water 14:20."
        }
        Disclosure {
            objectName: "files"
            text: "Show all 3 files"
            open: true

            Label { text: "/shoots/tidewater/A003_C001_0612.MOV"; textStyle: Theme.listStyle; muted: true }
            Label { text: "/shoots/tidewater/A003_C002_0612.MOV"; textStyle: Theme.listStyle; muted: true }
        }
    }
}
