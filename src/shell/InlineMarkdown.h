#pragma once

#include <QString>

namespace corvane {

/// Converts one line with inline Markdown to rich text. Bold, italic, code and links become tags;
/// all other text, including HTML, is escaped. Block markers (list, quote, fence) have no effect.
QString richTextOfInlineMarkdown(const QString &line);

} // namespace corvane
