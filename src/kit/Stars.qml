// A rating from 0 to 5 stars. A click on a star rates, the cross clears the rating; Left and Right
// change it by one star, a digit sets it.
//   rating: int, 0 to 5; name: string; helpText: string; starTexts: list of string (each star's
//   help text); clearText: string (the cross's help text); large: bool; hoveredStar: int, 0 if none;
//   signal rated(int stars), by the user only, even if the rating is the same; the owner sets
//   `rating`
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import QtQuick.Templates as T
import Corvane.Kit

FocusItem {
    id: control

    property int rating: 0
    property string name: qsTr("Rating")
    property string helpText
    property bool showsFocusRing: visualFocus
    property var starTexts: []
    property string clearText: qsTr("Clear rating")
    property bool large: false
    property int hoveredStar: hover.hovered ? Math.ceil(hover.point.position.x / starWidth) : 0
    readonly property int starWidth: large ? Theme.largeStarWidth : Theme.starWidth
    readonly property int clearWidth: large ? Theme.largeStarClearWidth : Theme.starClearWidth

    // Read by the accessibility bridge.
    readonly property int value: rating
    readonly property int minimumValue: 0
    readonly property int maximumValue: 5
    readonly property int stepSize: 1

    signal rated(int stars)

    function rate(stars: int) {
        if (stars >= minimumValue && stars <= maximumValue) {
            rated(stars);
        }
    }

    implicitWidth: maximumValue * starWidth + clearWidth
    implicitHeight: Theme.controlHeight
    Keys.onLeftPressed: rate(rating - 1)
    Keys.onRightPressed: rate(rating + 1)
    Keys.onPressed: event => {
        if (event.key >= Qt.Key_0 && event.key <= Qt.Key_5 && event.modifiers === Qt.NoModifier) {
            control.rate(event.key - Qt.Key_0);
            event.accepted = true;
        }
    }

    HelpText.text: helpText
    Accessible.role: Accessible.Slider
    Accessible.focusable: true
    Accessible.name: name
    Accessible.description: Format.counted(rating, qsTr("star"))
    Accessible.onIncreaseAction: control.rate(control.rating + 1)
    Accessible.onDecreaseAction: control.rate(control.rating - 1)

    FocusRing {
        visible: control.showsFocusRing
    }

    Row {
        id: stars

        height: parent.height

        HoverHandler {
            id: hover

            enabled: control.enabled
        }
        TapHandler {
            gesturePolicy: TapHandler.ReleaseWithinBounds // grabs the click from items below
            onTapped: point =>
                control.rate(Math.ceil(Math.max(1, point.position.x) / control.starWidth))
        }

        Repeater {
            model: control.maximumValue

            Icon {
                required property int index
                readonly property bool filled: index < control.rating
                readonly property bool isPreviewed: index < control.hoveredStar && !filled

                anchors.verticalCenter: parent.verticalCenter
                width: control.starWidth
                size: control.large ? Theme.brandIconSize : Theme.iconSize
                HelpText.text: control.starTexts[index] ?? ""
                symbol: filled || isPreviewed ? "star.fill" : "star"
                color: !control.enabled ? Theme.disabledText
                     : filled || isPreviewed ? Theme.rating : Theme.fieldBorder
                opacity: isPreviewed ? Theme.previewedStarOpacity : 1
            }
        }
    }

    T.AbstractButton {
        id: cross

        objectName: control.objectName + ".clear"
        anchors.left: stars.right
        width: control.clearWidth
        height: parent.height
        visible: control.rating > 0
        focusPolicy: Qt.NoFocus
        onClicked: control.rate(0)
        HelpText.text: control.clearText
        Accessible.role: Accessible.Button
        Accessible.name: control.clearText
        Accessible.onPressAction: Buttons.click(cross)

        contentItem: Icon {
            symbol: "xmark.circle"
            size: Theme.checkIconSize
            color: cross.hovered ? Theme.primaryText : Theme.secondaryText
        }
    }
}
