// A rating with what each star says about itself.
//   everything of Stars
import QtQuick
import Corvane.Kit
import Corvane.Review

Stars {
    starTexts: StarHelp.stars
    clearText: StarHelp.clear
}
