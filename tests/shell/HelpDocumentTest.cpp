#include "shell/HelpDocument.h"
#include "shell/InlineMarkdown.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

using namespace corvane;
using namespace corvane::test;

TEST(HelpDocument, EachLineIsABlockOfTheFirstMatchingKind) {
    const std::tuple<const char *, HelpDocument::Kind, const char *> lines[] = {
        {"", HelpDocument::Gap, ""},
        {" \t ", HelpDocument::Gap, ""},
        {"# One", HelpDocument::Heading1, "One"},
        {"\t## Two **not bold**\t", HelpDocument::Heading2, "Two **not bold**"},
        {"###   Three", HelpDocument::Heading3, "  Three"},
        {"#### Four", HelpDocument::Paragraph, "#### Four"},
        {"#None", HelpDocument::Paragraph, "#None"},
        {"#", HelpDocument::Paragraph, "#"},
        {"    - Deep", HelpDocument::Bullet, "Deep"},
        {"-None", HelpDocument::Paragraph, "-None"},
        {"- - a", HelpDocument::Bullet, "- a"},
        {"1. First", HelpDocument::Paragraph, "1. First"},
        {"```", HelpDocument::Paragraph, "```"},
        {"\u00a0x\r", HelpDocument::Paragraph, "\u00a0x\r"},
    };
    QStringList content;
    QList<HelpDocument::Block> blocks;
    for (const auto &[line, kind, text] : lines) {
        content.append(QString::fromUtf8(line));
        blocks.append({kind, QString::fromUtf8(text)});
    }
    EXPECT_EQ(HelpDocument::parse(content.join(QLatin1Char('\n'))), blocks);
}

TEST(HelpDocument, InlineFormsBecomeTagsAndOtherTextIsEscaped) {
    const std::pair<const char *, const char *> lines[] = {
        {"plain", "plain"},
        {"**b** and *i* and `c`", "<b>b</b> and <i>i</i> and <code>c</code>"},
        {"_i_ __b__ snake_case_name", "<i>i</i> <b>b</b> snake_case_name"},
        {"***both***", "<i><b>both</b></i>"},
        {"`**not** <b>`", "<code>**not** &lt;b&gt;</code>"},
        {"[the \"site\"](https://a.example/?x=1&y=2)",
         "<a href=\"https://a.example/?x=1&amp;y=2\">the &quot;site&quot;</a>"},
        {"[x](https://a/?b&amp;c=\"&#x41;) [y]() [z](<a b> \"t\")",
         "<a href=\"https://a/?b&amp;c=&quot;&#x41;\">x</a> <a href=\"\">y</a> "
         "<a href=\"a b\">z</a>"},
        {"<b>literal</b> a < b & c", "&lt;b&gt;literal&lt;/b&gt; a &lt; b &amp; c"},
        {"<img src=\"file:///etc/passwd\">", "&lt;img src=&quot;file:///etc/passwd&quot;&gt;"},
        {"![words](file:///x.png)", "words"},
        {"* star", "* star"},
        {"1. First", "1. First"},
        {"> quote", "&gt; quote"},
        {"#### Four", "#### Four"},
        {"```", "```"},
        {"| a | b |", "| a | b |"},
        {"---", "---"},
        {"\\*kept\\*", "*kept*"},
        {"**open", "**open"},
        {"`s` = select", "<code>s</code> = select"},
        {"", ""},
    };
    for (const auto &[line, rich] : lines) {
        EXPECT_EQ(richTextOfInlineMarkdown(QString::fromUtf8(line)).toStdString(), rich);
    }
}

TEST(HelpDocument, AMissingOrUnreadableGuideShowsAnError) {
    const TestFolder folder;
    const std::pair<QString, const char *> guides[] = {
        {folder.at("none.md"), "UserGuide.md not found in bundle."},
        {folder.folder("folder"), "Could not read UserGuide.md: "},
        {folder.write("latin1.md", "caf\xe9"), "Could not read UserGuide.md: "},
    };
    for (const auto &[path, message] : guides) {
        HelpDocument help(path);
        EXPECT_TRUE(help.isLoading());
        help.load();
        EXPECT_THAT(help.loadError().toStdString(), testing::StartsWith(message));
        EXPECT_FALSE(help.isLoading());
        EXPECT_EQ(help.rowCount(), 0);
    }
    HelpDocument help(folder.write("guide.md", "# A\n\n- *b*"));
    help.load();
    EXPECT_EQ(help.loadError(), QString());
    ASSERT_EQ(help.rowCount(), 3);
    EXPECT_EQ(help.data(help.index(2), HelpDocument::TextRole), QStringLiteral("<i>b</i>"));
}

TEST(HelpDocument, OpensWebAndMailLinksOnly) {
    for (const char *const address :
         {"https://a.example", "http://a.example", "mailto:a@b.example"}) {
        EXPECT_TRUE(HelpDocument::isAllowedLink(QLatin1String(address))) << address;
    }
    for (const char *const address :
         {"file:///bin/sh", "javascript:alert(1)", "a.example", "", "/x"}) {
        EXPECT_FALSE(HelpDocument::isAllowedLink(QLatin1String(address))) << address;
        EXPECT_FALSE(HelpDocument::openLink(QLatin1String(address))) << address;
    }
}
