// The flags of the inspector's clip, in the order of `ClipInspector::flags`.
//   inspector: ClipInspector
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Review

FlowLayout {
    id: flags

    required property ClipInspector inspector
    readonly property list<color> grounds: [Theme.flagFavoriteBackground, Theme.flagSelectedBackground, Theme.flagReviewedBackground,
                                            Theme.flagRejectedBackground]
    readonly property list<color> borders: [Theme.flagFavoriteBorder, Theme.flagSelectedBorder,
                                            Theme.flagReviewedBorder, Theme.flagRejectedBorder]
    readonly property list<color> inks: [Theme.favorite, Theme.success, Theme.primaryText, Theme.danger]

    Repeater {
        // A number as model: a changed flag keeps its button and the focus.
        model: flags.inspector.flags.length

        FlagButton {
            required property int index
            readonly property var flag: flags.inspector.flags[index]

            objectName: "inspector.flag." + index
            title: flag.title
            symbol: flag.icon
            shortcut: flag.shortcut
            helpText: flag.help
            isOn: flag.isOn
            activeColor: flags.grounds[index]
            activeBorder: flags.borders[index]
            activeInk: flags.inks[index]
            onClicked: flags.inspector.toggleFlag(index)
        }
    }
}
