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
        id: split

        // Includes the line, as all widths of the side pane do.
        readonly property real maximumSideWidth: Math.max(Theme.sidePaneMinWidth,
            Math.min(Theme.sidePaneMaxWidth, width - Theme.mainPaneMinWidth))

        function setSideWidth(sideWidth: real) {
            root.review.panes.sidePaneWidth = Math.round(Math.max(Theme.sidePaneMinWidth,
                                                                  Math.min(sideWidth, maximumSideWidth)));
            side.T.SplitView.preferredWidth = root.review.panes.sidePaneWidth - Theme.hairline;
        }

        function resizeByKey(key: int): bool {
            const sideWidth = side.width + Theme.hairline;
            switch (key) {
            case Qt.Key_Left:
                setSideWidth(sideWidth - Theme.splitStep);
                return true;
            case Qt.Key_Right:
                setSideWidth(sideWidth + Theme.splitStep);
                return true;
            case Qt.Key_Home:
                setSideWidth(Theme.sidePaneMinWidth);
                return true;
            case Qt.Key_End:
                setSideWidth(maximumSideWidth);
                return true;
            default:
                return false;
            }
        }

        objectName: "review.split"
        anchors.top: filterRow.bottom
        anchors.bottom: parent.bottom
        width: parent.width
        orientation: Qt.Horizontal
        onResizingChanged: {
            if (!resizing) {
                setSideWidth(side.width + Theme.hairline);
            }
        }

        handle: FocusItem {
            id: handle

            objectName: "review.split.handle"
            implicitWidth: Theme.hairline
            containmentMask: Item { // makes the thin line easier to grab
                x: -Theme.spacing4
                width: Theme.spacing8 + Theme.hairline
                height: root.height
            }
            Keys.onPressed: event => event.accepted = split.resizeByKey(event.key)
            Accessible.role: Accessible.Splitter
            Accessible.name: qsTr("Width of the side pane")
            Accessible.focusable: true

            Rectangle {
                x: (parent.width - width) / 2
                width: handle.visualFocus ? 2 * Theme.focusRingWidth : Theme.hairline
                height: parent.height
                color: handle.visualFocus ? Theme.focusRing : Theme.divider
            }
        }

        SidePane {
            id: side

            T.SplitView.preferredWidth: (root.review.panes.sidePaneWidth || Theme.sidePaneWidth) - Theme.hairline
            T.SplitView.minimumWidth: Theme.sidePaneMinWidth - Theme.hairline
            T.SplitView.maximumWidth: split.maximumSideWidth - Theme.hairline
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
