#include "shell/InlineMarkdown.h"

#include <QByteArray>

#include <md4c.h>

namespace corvane {

namespace {

/// Prepended to the text so that its first characters cannot start a block. Punctuation, because
/// emphasis must be recognized right after it.
constexpr char kGuard = '.';

struct RichText {
    QString text;
    bool isAfterGuard = false;
};

QString decoded(const MD_CHAR *text, MD_SIZE size) {
    return QString::fromUtf8(text, qsizetype(size));
}

/// The address of a link, which the parser passes as pieces of text and entities. Entities such as
/// "&amp;" are valid in rich text.
QString richText(const MD_ATTRIBUTE &attribute) {
    QString text;
    for (int i = 0; attribute.size > 0 && attribute.substr_offsets[i] < attribute.size; ++i) {
        const MD_OFFSET from = attribute.substr_offsets[i];
        const QString piece =
            decoded(attribute.text + from, attribute.substr_offsets[i + 1] - from);
        text += attribute.substr_types[i] == MD_TEXT_ENTITY ? piece : piece.toHtmlEscaped();
    }
    return text;
}

int enterSpan(MD_SPANTYPE type, void *detail, void *into) {
    QString &text = static_cast<RichText *>(into)->text;
    switch (type) {
    case MD_SPAN_EM:
        text += QStringLiteral("<i>");
        break;
    case MD_SPAN_STRONG:
        text += QStringLiteral("<b>");
        break;
    case MD_SPAN_CODE:
        text += QStringLiteral("<code>");
        break;
    case MD_SPAN_A:
        text += QStringLiteral("<a href=\"%1\">")
                    .arg(richText(static_cast<MD_SPAN_A_DETAIL *>(detail)->href));
        break;
    default:
        break; // an image shows its alternative text
    }
    return 0;
}

int leaveSpan(MD_SPANTYPE type, void *, void *into) {
    QString &text = static_cast<RichText *>(into)->text;
    switch (type) {
    case MD_SPAN_EM:
        text += QStringLiteral("</i>");
        break;
    case MD_SPAN_STRONG:
        text += QStringLiteral("</b>");
        break;
    case MD_SPAN_CODE:
        text += QStringLiteral("</code>");
        break;
    case MD_SPAN_A:
        text += QStringLiteral("</a>");
        break;
    default:
        break;
    }
    return 0;
}

int addText(MD_TEXTTYPE type, const MD_CHAR *text, MD_SIZE size, void *into) {
    RichText &rich = *static_cast<RichText *>(into);
    QString piece = decoded(text, size);
    if (!rich.isAfterGuard && !piece.isEmpty()) {
        rich.isAfterGuard = true;
        piece.remove(0, 1);
    }
    // Entities such as "&amp;" are valid in rich text.
    rich.text += type == MD_TEXT_ENTITY ? piece : piece.toHtmlEscaped();
    return 0;
}

int passOver(MD_BLOCKTYPE, void *, void *) {
    return 0;
}

} // namespace

QString richTextOfInlineMarkdown(const QString &line) {
    const QByteArray markdown = kGuard + line.toUtf8();
    MD_PARSER parser{};
    parser.flags = MD_FLAG_NOHTML;
    parser.enter_block = passOver;
    parser.leave_block = passOver;
    parser.enter_span = enterSpan;
    parser.leave_span = leaveSpan;
    parser.text = addText;
    RichText rich;
    if (::md_parse(markdown.constData(), MD_SIZE(markdown.size()), &parser, &rich) != 0) {
        return line.toHtmlEscaped();
    }
    return rich.text;
}

} // namespace corvane
