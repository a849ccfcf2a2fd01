// The ranges of the clip's subclips as bars in one row. Later bars are drawn over earlier ones.
//   review: ReviewScreenState
// Qt 6.4 lacks `pragma ComponentBehavior: Bound`.
// qmllint disable unqualified
import QtQuick
import Corvane.Kit
import Corvane.Review

Item {
    id: bars

    required property ReviewScreenState review
    readonly property SubclipListModel subclips: review.subclips

    objectName: "bars"
    implicitHeight: Theme.subclipBarsHeight
    Accessible.role: Accessible.Grouping
    Accessible.name: qsTr("Subclips")

    Repeater {
        model: bars.subclips

        ButtonBase {
            id: bar

            required property int index
            required property string subclipId
            required property string name
            required property string range
            required property real inSeconds
            required property real outSeconds
            required property bool isActive
            readonly property rect barRect: bars.subclips.bar(inSeconds, outSeconds,
                                                            bars.review.transport.clipDuration, bars.width)

            objectName: "bars." + index
            x: barRect.x
            visible: barRect.width > 0
            width: barRect.width
            height: bars.height
            focusPolicy: Qt.TabFocus
            onClicked: {
                focus = false; // the bars are about to be hidden
                bars.review.selection.selectSubclip(bars.review.selection.selectedVideoId, subclipId);
            }
            text: name
            helpText: name
            Accessible.description: range

            background: Item {
                Rectangle {
                    objectName: bar.objectName + ".fill"
                    y: bar.barRect.y
                    width: parent.width
                    height: bar.barRect.height
                    radius: Theme.subclipBarRadius
                    color: bar.isActive || bar.hovered ? Theme.activeSubclipBar : Theme.subclipBar

                    FocusRing {
                        visible: bar.visualFocus
                    }
                }
            }
        }
    }
}
