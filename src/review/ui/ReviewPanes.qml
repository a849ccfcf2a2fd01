// The review screen below the header: banners, filter row, and two panes with a handle between them.
//   review: ReviewScreenState; engine: PlayerEngine; banners: MediaBanners
//   signal focusLeft(): a field no longer needs the focus
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit
import Corvane.Review

Item {
    id: root

    required property ReviewScreenState review
    required property PlayerEngine engine
    required property MediaBanners banners

    signal focusLeft()

    objectName: "review"

    MediaBannersView {
        id: bannersView

        width: parent.width
        banners: root.banners
    }

    FilterRow {
        id: filterRow

        anchors.top: bannersView.bottom
        width: parent.width
        review: root.review
        onFocusLeft: root.focusLeft()
    }

    T.SplitView {
        objectName: "review.split"
        anchors.top: filterRow.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        orientation: Qt.Horizontal

        handle: Rectangle {
            implicitWidth: Theme.hairline
            color: Theme.divider
            containmentMask: Item { // makes the thin line easier to grab
                x: -Theme.spacing4
                width: Theme.spacing8 + Theme.hairline
                height: root.height
            }
        }

        SidePane {
            id: side

            // Includes the line.
            T.SplitView.preferredWidth: Theme.sidePaneWidth - Theme.hairline
            T.SplitView.minimumWidth: Theme.sidePaneMinWidth - Theme.hairline
            T.SplitView.maximumWidth: Math.min(Theme.sidePaneMaxWidth,
                                               root.width - Theme.mainPaneMinWidth) - Theme.hairline
            review: root.review
        }

        MainPane {
            T.SplitView.minimumWidth: Theme.mainPaneMinWidth
            T.SplitView.fillWidth: true
            review: root.review
            engine: root.engine
        }
    }
}
