#include "platform/ISODate.h"
#include "platform/JSONDocument.h"
#include "platform/JSONWriter.h"

#include <gmock/gmock.h>

#include <limits>

using namespace corvane;

namespace {

JSONValue parsed(const QByteArray &text) {
    return JSONDocument::parse(text).root().toValue();
}

QByteArray compact(const JSONValue &value) {
    JSONWriter writer(JSONWriter::Style::Compact);
    writer.value(value);
    return writer.finish();
}

} // namespace

TEST(JSONDocument, ReadsNumbersExactly) {
    EXPECT_EQ(parsed("9223372036854775807"), JSONValue(std::numeric_limits<qint64>::max()));
    EXPECT_EQ(parsed("-9223372036854775808"), JSONValue(std::numeric_limits<qint64>::min()));
    EXPECT_EQ(parsed("3.0"), JSONValue(3));
    EXPECT_EQ(parsed("1e300"), JSONValue(1e300));
    EXPECT_EQ(parsed("23.976023976023978"), JSONValue(23.976023976023978));
    EXPECT_EQ(parsed("9223372036854775808"), JSONValue(9223372036854775808.0));
    EXPECT_EQ(parsed("0e86"), JSONValue(0));
    EXPECT_EQ(parsed("1e-999"), JSONValue(0));
    EXPECT_EQ(parsed("5e-324"), JSONValue(5e-324));
    const JSONDocument large = JSONDocument::parse("18446744073709551615");
    EXPECT_EQ(large.root().unsignedInteger(), std::numeric_limits<quint64>::max());
    EXPECT_FALSE(large.root().integer());
}

TEST(JSONDocument, RefusesInvalidJSON) {
    const QByteArray nul("{}\0x", 4);
    for (const QByteArray &text :
         {QByteArray(), QByteArray("{"), QByteArray("[1,]"), QByteArray("{} {}"), nul,
          QByteArray("\"\xFF\""), QByteArray("\"\xED\xA0\x80\""), QByteArray("\"\\ud800\""),
          QByteArray("nul"), QByteArray("1e999"), QByteArray("[\"a\nb\"]")}) {
        EXPECT_THROW(JSONDocument::parse(text), JSONSyntaxError) << text.toStdString();
    }
    EXPECT_NO_THROW(parsed(QByteArray(512, '[') + QByteArray(512, ']')));
    EXPECT_THROW(parsed(QByteArray(513, '[') + QByteArray(513, ']')), JSONSyntaxError);
    EXPECT_THROW(parsed(QByteArray(1'000'000, '[')), JSONSyntaxError);
}

TEST(JSONDocument, PreservesValuesInARoundTrip) {
    const QByteArray text =
        R"({"a":[null,true,-1,0.1,"x\u0000\n/\"\\",{},[]],"b":{"c":{"d":[1]}}})";
    EXPECT_EQ(compact(parsed(text)), text);
    EXPECT_EQ(parsed("\xEF\xBB\xBF[1]"), parsed("[1]"));
    EXPECT_EQ(parsed(R"({"k":1,"k":2})"), parsed(R"({"k":2})"));
}

TEST(JSONDocument, EscapesControlCharactersAndRefusesUnescapedOnes) {
    for (char16_t code = 1; code < 0x20; ++code) {
        for (int before = 0; before <= 40; ++before) {
            const QString text =
                QString(before, QLatin1Char('a')) + QChar(code) + QString(40, QLatin1Char('b'));
            const QByteArray written = compact(text);
            EXPECT_EQ(parsed(written), JSONValue(text));
            EXPECT_FALSE(written.contains(char(code)));
            EXPECT_THROW(parsed('"' + text.toLatin1() + '"'), JSONSyntaxError);
        }
    }
}

TEST(JSONValue, CopiesAreIndependent) {
    JSONValue original = parsed(R"({"list":[1,2]})");
    JSONValue copy = original;
    (*copy.object())[QStringLiteral("list")].array()->append(3);
    EXPECT_EQ(original, parsed(R"({"list":[1,2]})"));
    EXPECT_EQ(copy, parsed(R"({"list":[1,2,3]})"));
    EXPECT_NE(original, copy);
}

TEST(ISODate, ReadsBothFormsAndWritesMilliseconds) {
    const auto rewritten = [](const char *text) {
        const auto date = isoDate::fromText(text);
        return date ? isoDate::toText(*date) : QStringLiteral("none");
    };
    EXPECT_EQ(rewritten("2026-03-01T09:30:12.345Z"), QStringLiteral("2026-03-01T09:30:12.345Z"));
    EXPECT_EQ(rewritten("2026-03-01T09:30:12Z"), QStringLiteral("2026-03-01T09:30:12.000Z"));
    EXPECT_EQ(rewritten("2026-03-01T09:30:12.3456789Z"),
              QStringLiteral("2026-03-01T09:30:12.345Z"));
    EXPECT_EQ(rewritten("2026-03-01T00:30:00+02:00"), QStringLiteral("2026-02-28T22:30:00.000Z"));
    EXPECT_EQ(rewritten("1969-12-31T23:59:59.999Z"), QStringLiteral("1969-12-31T23:59:59.999Z"));
    for (const char *text :
         {"", "2026-02-30T00:00:00Z", "2026-03-01 09:30:12Z", "2026-03-01T09:30:12",
          "2026-03-01T24:00:00Z", "2026-03-01T09:30:12.Z", "1772357412"}) {
        EXPECT_EQ(rewritten(text), QStringLiteral("none")) << text;
    }
}
