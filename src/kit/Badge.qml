// A badge in a row: S, R, X or HD.
//   text: "S", "R", "X" or "HD"; name: string (its accessible name)
import QtQuick

Rectangle {
    id: badge

    property string text
    property string name: text
    readonly property bool outlined: text === "HD"

    implicitHeight: Theme.badgeHeight
    implicitWidth: Math.max(Theme.badgeHeight,
        outlined ? Math.ceil(label.implicitWidth) + 2 * Theme.spacing4 : 0)
    radius: Theme.badgeRadius
    color: text === "S" ? Theme.success : text === "X" ? Theme.danger
         : outlined ? Theme.transparent : Theme.neutralBadge
    border.width: outlined ? Theme.hairline : 0
    border.color: Theme.controlBorder
    Accessible.role: Accessible.StaticText
    Accessible.name: name

    Text {
        id: label

        anchors.centerIn: parent
        text: badge.text
        font: Theme.badgeStyle.font
        color: badge.text === "S" ? Theme.successText
             : badge.text === "X" ? Theme.dangerText : Theme.primaryText
        Accessible.ignored: true
    }
}
