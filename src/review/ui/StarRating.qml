// `Stars` with help texts.
import QtQuick
import Corvane.Kit
import Corvane.Review

Stars {
    starTexts: StarHelp.stars
    clearText: StarHelp.clear
}
