// The room of review below the header: the banners, the filter row, and the two panes with the handle
// between them.
//   review: what is shown and decided; engine: the player; banners: the media's
//   signal focusLeft(): a field that is done with gives the focus back
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
            containmentMask: Item { // the line is thinner than a hand can take
                x: -Theme.spacing4
                width: Theme.spacing8 + Theme.hairline
                height: root.height
            }
        }

        SidePane {
            id: side

            // The line counts as a part of this pane.
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
