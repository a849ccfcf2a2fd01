// A block of the user guide: a gap, a heading, a bullet or a paragraph.
//   kind, text: roles of HelpDocument
// The functions take points of the block, and offsets in its text without marks.
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
    readonly property bool isGap: kind === HelpDocument.Gap
    readonly property bool isBullet: kind === HelpDocument.Bullet
    readonly property int ruleHeight: kind === HelpDocument.Heading1 ? Theme.heading1RuleHeight
                                    : kind === HelpDocument.Heading2 ? Theme.heading2RuleHeight : 0
    readonly property int above: kind === HelpDocument.Heading3 ? Theme.spacing16
                               : kind === HelpDocument.Paragraph ? Theme.spacing4 : 0
    readonly property int below: kind === HelpDocument.Heading3 || kind === HelpDocument.Paragraph
                                 ? Theme.spacing4 : 0

    function offsetAt(point: point): int {
        return isGap ? 0 : body.positionAt(point.x - body.x, point.y - body.y);
    }

    function linkAt(point: point): string {
        return isGap ? "" : body.linkAt(point.x - body.x, point.y - body.y);
    }

    // The two ends of the word at an offset.
    function wordAt(offset: int): var {
        body.cursorPosition = offset;
        body.selectWord();
        return [body.selectionStart, body.selectionEnd];
    }

    // Selects a part of the text and returns it, with the bullet if it starts the block.
    function select(from: int, to: real): string {
        body.select(from, Math.min(to, body.length));
        const bullet = isBullet && from === 0 && to > 0 ? dot.text + " " : "";
        return isGap ? "" : bullet + body.getText(from, Math.min(to, body.length));
    }

    function deselect() {
        body.deselect();
    }

    objectName: "helpView.line." + index
    height: isGap ? Theme.helpGap : above + body.height + below + ruleHeight
    Accessible.role: isHeading ? Accessible.Heading : Accessible.Paragraph
    Accessible.name: body.plain
    Accessible.ignored: isGap

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

        readonly property string plain: line.isGap ? "" : getText(0, length)

        y: line.above
        x: line.isBullet ? dot.width + Theme.spacing8 : 0
        width: parent.width - x
        visible: !line.isGap
        text: line.text
        textFormat: line.isHeading ? TextEdit.PlainText : TextEdit.RichText
        wrapMode: TextEdit.Wrap
        readOnly: true
        selectByMouse: false // HelpSelection selects across blocks
        activeFocusOnPress: false
        persistentSelection: true
        font: line.kind === HelpDocument.Heading1 ? Theme.helpHeading1Style.font
            : line.kind === HelpDocument.Heading2 ? Theme.helpHeading2Style.font
            : line.kind === HelpDocument.Heading3 ? Theme.helpHeading3Style.font : Theme.helpBodyStyle.font
        color: Theme.primaryText
        selectionColor: Theme.textSelection
        selectedTextColor: Theme.primaryText
        palette.link: Theme.accent
        Accessible.ignored: true
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: line.ruleHeight
        visible: height > 0
        color: line.kind === HelpDocument.Heading1 ? Theme.heading1Rule : Theme.heading2Rule
    }
}
