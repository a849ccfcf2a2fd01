// `Stars` with help texts.
import QtQuick
import Corvane.Kit

Stars {
    function starText(star: int): string {
        return qsTr("Rate %1 (%2 key)").arg(Format.counted(star, qsTr("star"))).arg(star);
    }

    starTexts: [starText(1), starText(2), starText(3), starText(4), starText(5)]
    clearText: qsTr("Clear rating (0 key)")
}
