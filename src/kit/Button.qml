// A push button. Without text it is a square that shows its symbol, and its help text is its
// accessible name.
//   text, symbol: string; helpText: string, shown while disabled too; kind: Button.Plain |
//   Button.Primary | Button.Bare (no background); destructive: bool (red under the pointer); large,
//   small: bool; muted: bool (secondary text color); iconSize: int; trailingSymbol: string (a
//   menu's chevron); showsHover, showsFocusRing: bool; glyphColor: color; signal clicked(), by the
//   pointer, Return, Enter or Space
import QtQuick

ButtonBase {
    id: control

    enum Kind { Plain, Primary, Bare }

    property int kind: iconOnly ? Button.Bare : Button.Plain
    property string symbol
    property string trailingSymbol
    property bool destructive: false
    property bool large: false
    property bool small: false
    property bool muted: false
    property int iconSize: iconOnly && !destructive ? Theme.iconSize : Theme.buttonIconSize
    property var textStyle: small ? Theme.listNameStyle
                             : kind === Button.Primary ? Theme.bodyStrongStyle : Theme.bodyLabelStyle
    readonly property bool iconOnly: text === ""
    readonly property color backgroundColor:
        !enabled ? (kind === Button.Bare ? Theme.transparent : Theme.controlDisabled)
        : kind === Button.Primary
          ? (down ? Theme.accentPressed : showsHover ? Theme.accentHovered : Theme.accent)
        : destructive && down ? Theme.danger
        : kind === Button.Bare
          ? (down ? Theme.controlHovered : showsHover ? Theme.controlBackground : Theme.transparent)
        : down ? Theme.controlPressed : showsHover ? Theme.controlHovered : Theme.controlBackground
    readonly property color labelColor: !enabled ? Theme.disabledText
        : kind === Button.Primary ? Theme.accentText
        : destructive && down ? Theme.dangerText
        : destructive && showsHover ? Theme.danger
        : muted ? Theme.secondaryText : Theme.primaryText
    property color glyphColor:
        !enabled || kind === Button.Primary || (destructive && (showsHover || down))
        ? labelColor : Theme.secondaryText

    implicitHeight: large ? Theme.footerButtonHeight
                          : small ? Theme.smallButtonHeight : Theme.controlHeight
    implicitWidth: iconOnly ? implicitHeight : implicitContentWidth + leftPadding + rightPadding
    horizontalPadding: iconOnly ? 0 : large ? Theme.spacing16 : Theme.spacing12
    leftPadding: horizontalPadding - (!iconOnly && symbol !== "" ? Theme.spacing4 : 0)
    rightPadding: horizontalPadding - (!iconOnly && trailingSymbol !== "" ? Theme.spacing4 : 0)
    spacing: Theme.spacing6
    font: textStyle.font

    Accessible.name: iconOnly ? helpText : text
    Accessible.description: iconOnly ? "" : helpText

    contentItem: Item {
        implicitWidth: Math.ceil(label.implicitWidth) + row.iconsWidth

        Row {
            id: row

            readonly property real iconsWidth:
                (control.symbol !== "" ? leading.width + spacing : 0)
                + (control.trailingSymbol !== "" ? trailing.width + spacing : 0)

            anchors.centerIn: parent
            spacing: control.spacing

            Icon {
                id: leading

                anchors.verticalCenter: parent.verticalCenter
                visible: control.symbol !== ""
                symbol: control.symbol
                size: control.iconSize
                color: control.glyphColor
            }

            ControlText {
                id: label

                visible: !control.iconOnly
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, control.availableWidth - row.iconsWidth)
                text: control.text
                font: control.font
                color: control.labelColor
                elide: Text.ElideRight
            }

            Icon {
                id: trailing

                anchors.verticalCenter: parent.verticalCenter
                visible: control.trailingSymbol !== ""
                symbol: control.trailingSymbol
                size: Theme.buttonIconSize
                color: control.glyphColor
            }
        }
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: control.backgroundColor

        FocusRing {
            visible: control.showsFocusRing
        }
    }
}
