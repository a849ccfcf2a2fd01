// Facts, rating, flags, notes and tags of a clip. The title is in the top row of the side pane. Esc in
// a field removes its focus.
//   inspector: ClipInspector
import QtQuick
import Corvane.Kit
import Corvane.Review

Rectangle {
    id: view

    required property ClipInspector inspector

    objectName: "inspector"
    implicitWidth: Theme.sidePaneWidth
    color: Theme.windowBackground
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Clip info")

    FocusFlickable {
        id: scroll

        objectName: "inspector.scroll"
        anchors.fill: parent
        contentHeight: sections.height + 2 * Theme.sectionGap
        focusMargin: Theme.sectionGap

        Column {
            id: sections

            component Rule: Divider {
                x: -Theme.regionPadding
                width: parent.width + 2 * Theme.regionPadding
            }

            x: Theme.regionPadding
            y: Theme.sectionGap
            width: scroll.width - 2 * x
            spacing: Theme.sectionGap

            FlowChipsLayout {
                objectName: "inspector.facts"
                width: parent.width
                facts: view.inspector.facts
            }

            Rule {}

            InspectorSection {
                title: qsTr("Rating")

                StarRating {
                    objectName: "inspector.rating"
                    height: Theme.smallButtonHeight
                    large: true
                    rating: view.inspector.rating
                    onRated: stars => view.inspector.setRating(stars)
                }
            }

            InspectorSection {
                title: qsTr("Flags")

                FlagButtons {
                    width: parent.width
                    inspector: view.inspector
                }
            }

            Rule {}

            InspectorSection {
                title: qsTr("Notes")

                NotesField {
                    objectName: "inspector.notes"
                    width: parent.width
                    inspector: view.inspector
                }
            }

            InspectorSection {
                title: qsTr("Tags")

                TagsEditor {
                    width: parent.width
                    inspector: view.inspector
                }
            }

            Rule {}

            InspectorSection {
                title: qsTr("Source")

                FactChip {
                    objectName: "inspector.source"
                    text: view.inspector.source
                    maximumWidth: parent.width
                }
            }
        }
    }
}
