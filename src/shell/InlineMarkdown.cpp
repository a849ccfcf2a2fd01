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

QLatin1String tagOf(MD_SPANTYPE type) {
    switch (type) {
    case MD_SPAN_EM:
        return QLatin1String("i");
    case MD_SPAN_STRONG:
        return QLatin1String("b");
    case MD_SPAN_CODE:
        return QLatin1String("code");
    case MD_SPAN_A:
        return QLatin1String("a");
    default:
        return {}; // an image shows its alternative text
    }
}

int enterSpan(MD_SPANTYPE type, void *detail, void *userData) {
    QString &text = static_cast<RichText *>(userData)->text;
    if (type == MD_SPAN_A) {
        text += QStringLiteral("<a href=\"%1\">")
                    .arg(richText(static_cast<MD_SPAN_A_DETAIL *>(detail)->href));
    } else if (const QLatin1String tag = tagOf(type); !tag.isEmpty()) {
        text += QStringLiteral("<%1>").arg(tag);
    }
    return 0;
}

int leaveSpan(MD_SPANTYPE type, void *, void *userData) {
    if (const QLatin1String tag = tagOf(type); !tag.isEmpty()) {
        static_cast<RichText *>(userData)->text += QStringLiteral("</%1>").arg(tag);
    }
    return 0;
}

int addText(MD_TEXTTYPE type, const MD_CHAR *text, MD_SIZE size, void *userData) {
    RichText &rich = *static_cast<RichText *>(userData);
    QString piece = decoded(text, size);
    if (!rich.isAfterGuard && !piece.isEmpty()) {
        rich.isAfterGuard = true;
        piece.remove(0, 1);
    }
    // Entities such as "&amp;" are valid in rich text.
    rich.text += type == MD_TEXT_ENTITY ? piece : piece.toHtmlEscaped();
    return 0;
}

int ignoreBlock(MD_BLOCKTYPE, void *, void *) {
    return 0;
}

} // namespace

QString richTextOfInlineMarkdown(const QString &line) {
    const QByteArray markdown = kGuard + line.toUtf8();
    MD_PARSER parser{};
    parser.flags = MD_FLAG_NOHTML;
    parser.enter_block = ignoreBlock;
    parser.leave_block = ignoreBlock;
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
