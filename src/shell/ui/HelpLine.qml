// A block of the user guide: a gap, a heading, a bullet or a paragraph.
//   kind, text: roles of HelpDocument; signal linkActivated(string address)
import QtQuick
import Corvane.Kit
import Corvane.Shell

Item {
    id: line

    required property int index
    required property int kind
    required property string text
    readonly property bool isHeading: kind === HelpDocument.Heading1 || kind === HelpDocument.Heading2
                                      || kind === HelpDocument.Heading3
    readonly property bool isBullet: kind === HelpDocument.Bullet
    readonly property int ruleHeight: kind === HelpDocument.Heading1 ? Theme.heading1RuleHeight
                                    : kind === HelpDocument.Heading2 ? Theme.heading2RuleHeight : 0
    readonly property int above: kind === HelpDocument.Heading3 ? Theme.spacing16
                               : kind === HelpDocument.Paragraph ? Theme.spacing4 : 0
    readonly property int below: kind === HelpDocument.Heading3 || kind === HelpDocument.Paragraph
                                 ? Theme.spacing4 : 0

    signal linkActivated(string address)

    objectName: "helpView.line." + index
    height: kind === HelpDocument.Gap ? Theme.helpGap
                                   : above + body.height + below + ruleHeight
    Accessible.role: isHeading ? Accessible.Heading : Accessible.Paragraph
    Accessible.name: body.plain
    Accessible.ignored: kind === HelpDocument.Gap

    Text {
        id: dot

        y: line.above
        visible: line.isBullet
        text: "•"
        font: Theme.helpBulletStyle.font
        color: Theme.primaryText
        Accessible.ignored: true
    }

    TextEdit {
        id: body

        readonly property string plain: line.kind === HelpDocument.Gap ? "" : getText(0, length)

        y: line.above
        x: line.isBullet ? dot.width + Theme.spacing8 : 0
        width: parent.width - x
        visible: line.kind !== HelpDocument.Gap
        text: line.text
        textFormat: line.isHeading ? TextEdit.PlainText : TextEdit.RichText
        wrapMode: TextEdit.Wrap
        readOnly: true
        selectByMouse: true
        activeFocusOnPress: false
        font: line.kind === HelpDocument.Heading1 ? Theme.helpHeading1Style.font
            : line.kind === HelpDocument.Heading2 ? Theme.helpHeading2Style.font
            : line.kind === HelpDocument.Heading3 ? Theme.helpHeading3Style.font : Theme.helpBodyStyle.font
        color: Theme.primaryText
        selectionColor: Theme.textSelection
        selectedTextColor: Theme.primaryText
        palette.link: Theme.accent
        onLinkActivated: address => line.linkActivated(address)
        Accessible.ignored: true

        HoverHandler {
            cursorShape: body.hoveredLink !== "" ? Qt.PointingHandCursor : Qt.IBeamCursor
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: line.ruleHeight
        visible: height > 0
        color: line.kind === HelpDocument.Heading1 ? Theme.heading1Rule : Theme.heading2Rule
    }
}
