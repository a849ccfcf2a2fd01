// The media confirmation banners of the open project, one below the other.
//   banners: MediaBanners
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Review

Column {
    id: view

    required property MediaBanners banners

    objectName: "banners"

    Repeater {
        model: view.banners.banners.length

        MediaBannerRow {
            required property int index

            objectName: "banner." + index
            width: view.width
            banner: view.banners.banners[index]
            onAnswered: view.banners.answer(index)
            onClosed: view.banners.close(index)
        }
    }
}
