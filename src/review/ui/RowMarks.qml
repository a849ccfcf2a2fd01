// The marks of a row in fixed columns: rating, heart, S, R, X, HD.
//   rating: string, empty if unrated; favorite, selectedForExport, reviewed, rejected, hasHd: bool;
//   tight: bool
// Ignored by screen readers, which read the row's description.
import QtQuick
import Corvane.Kit

Item {
    id: marks

    property string rating
    property bool favorite: false
    property bool selectedForExport: false
    property bool reviewed: false
    property bool rejected: false
    property bool hasHd: false
    property bool tight: false
    readonly property int heartX: tight ? Theme.tightRatingColumnWidth : Theme.ratingColumnWidth
    readonly property int badgeStep: tight ? Theme.tightBadgeColumnWidth : Theme.badgeColumnWidth
    readonly property int badgeX: heartX + Theme.heartColumnWidth

    height: Theme.marksHeight
    Accessible.ignored: true

    Icon {
        id: star

        y: (marks.height - height) / 2
        visible: marks.rating !== ""
        symbol: "star.fill"
        size: Theme.markIconSize
        color: Theme.rating
    }

    ControlText {
        x: star.width + Theme.hairline
        y: (marks.height - height) / 2 + Theme.hairline
        visible: marks.rating !== ""
        text: marks.rating
        font: Theme.smallStrongStyle.font
        color: Theme.rating
    }

    Icon {
        x: marks.heartX
        y: (marks.height - height) / 2
        visible: marks.favorite
        symbol: "heart.fill"
        size: Theme.markIconSize
        color: Theme.favorite
    }

    Badge {
        x: marks.badgeX
        y: marks.height - height
        visible: marks.selectedForExport
        text: "S"
        Accessible.ignored: true
    }

    Badge {
        x: marks.badgeX + marks.badgeStep
        y: marks.height - height
        visible: marks.reviewed
        text: "R"
        Accessible.ignored: true
    }

    Badge {
        x: marks.badgeX + 2 * marks.badgeStep
        y: marks.height - height
        visible: marks.rejected
        text: "X"
        Accessible.ignored: true
    }

    Badge {
        x: marks.badgeX + 3 * marks.badgeStep
        y: marks.height - height
        visible: marks.hasHd
        text: "HD"
        Accessible.ignored: true
    }
}
