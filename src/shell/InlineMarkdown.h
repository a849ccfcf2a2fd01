#pragma once

#include <QString>

namespace corvane {

/// One line of text with Markdown's inline forms, as rich text for the screen: bold, italic, code
/// and links become tags, and everything else, markup of other languages included, shows as it was
/// written. Forms that begin a block (a list, a quote, a fence) mean nothing here.
QString richTextOfInlineMarkdown(const QString &line);

} // namespace corvane
