// The naming preset and, for the custom preset, its fields.
//   naming: NamingFields; name: string, of the items: "<name>.preset", "<name>.baseName", ...
import QtQuick
import Corvane.Kit
import Corvane.Delivery

Column {
    id: section

    required property NamingFields naming
    property string name

    width: parent ? parent.width : 0
    spacing: Theme.spacing8

    ChoiceRow {
        name: section.name + ".preset"
        label: qsTr("Naming")
        model: section.naming.presets
        currentIndex: section.naming.preset
        onActivated: index => section.naming.preset = index
    }

    Rectangle {
        visible: section.naming.isCustom
        x: Theme.labelColumnWidth + Theme.spacing16
        width: parent.width - x
        height: fields.height + 2 * Theme.spacing8
        radius: Theme.panelRadius
        color: Theme.popupBackground

        Column {
            id: fields

            x: Theme.spacing12
            y: Theme.spacing8
            width: parent.width - 2 * x
            spacing: Theme.namingRowGap

            CheckBox {
                objectName: section.name + ".keepOriginal"
                text: qsTr("Keep original filename for whole-clips")
                checked: section.naming.keepOriginalForWholeVideos
                onToggled: section.naming.keepOriginalForWholeVideos = checked
            }
            NamingRow {
                label: qsTr("Base name")

                TextField {
                    objectName: section.name + ".baseName"
                    width: Theme.namingFieldWidth
                    name: qsTr("Base name")
                    placeholderText: "MyShoot"
                    text: section.naming.baseName
                    onTextEdited: section.naming.baseName = text
                }
            }
            CheckBox {
                objectName: section.name + ".shootDate"
                text: qsTr("Include shoot date")
                checked: section.naming.includeShootDate
                onToggled: section.naming.includeShootDate = checked
            }
            CheckBox {
                objectName: section.name + ".originalFilename"
                text: qsTr("Include original filename token")
                checked: section.naming.includeOriginalFilename
                onToggled: section.naming.includeOriginalFilename = checked
            }
            CheckBox {
                objectName: section.name + ".originalFileNumber"
                text: qsTr("Include original file number tail")
                checked: section.naming.includeOriginalFileNumber
                onToggled: section.naming.includeOriginalFileNumber = checked
            }
            NamingRow {
                label: qsTr("Numbering")

                SegmentedChoice {
                    objectName: section.name + ".numbering"
                    name: qsTr("Numbering")
                    model: section.naming.numberings
                    currentIndex: section.naming.numbering
                    onActivated: index => section.naming.numbering = index
                }
            }
            CheckBox {
                objectName: section.name + ".subclipLabel"
                text: qsTr("Include subclip label")
                checked: section.naming.includeSubclipLabel
                onToggled: section.naming.includeSubclipLabel = checked
            }
            CheckBox {
                objectName: section.name + ".selectType"
                text: qsTr("Include select type token")
                checked: section.naming.includeSelectType
                onToggled: section.naming.includeSelectType = checked
            }
        }
    }
}
