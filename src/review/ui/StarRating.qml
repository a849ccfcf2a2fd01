// A rating with what each star says about itself.
//   everything of Stars; onChange: function of the new rating, also of the one that stands
import QtQuick
import Corvane.Kit
import Corvane.Review

Stars {
    id: stars

    property var onChange: null

    starTexts: StarHelp.stars
    clearText: StarHelp.clear
    onRated: rating => stars.onChange(rating)
}
