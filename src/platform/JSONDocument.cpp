#include "platform/JSONDocument.h"

#include <QUtf8StringView>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace corvane {

/// Receives the parser's events. A `false` ends the parse.
class JSONTokenCollector {
  public:
    using Token = JSONDocument::Token;
    using Kind = JSONDocument::Kind;

    explicit JSONTokenCollector(std::vector<Token> &tokens) : m_tokens(tokens) {}

    bool Null() { return append(Kind::Null); }
    bool Bool(bool value) { return append(Kind::Bool, qint64(value)); }
    /// The parser has checked the number's form and leaves its value to the standard library, which
    /// is exact; the parser's own exact arithmetic is undefined for a zero with an exponent.
    bool RawNumber(const char *text, rapidjson::SizeType length, bool) {
        const char *const end = text + length;
        const bool isInteger =
            std::none_of(text, end, [](char c) { return c == '.' || c == 'e' || c == 'E'; });
        qint64 number = 0;
        if (isInteger && std::from_chars(text, end, number).ec == std::errc()) {
            return append(Kind::Int, number);
        }
        quint64 large = 0;
        if (isInteger && std::from_chars(text, end, large).ec == std::errc()) {
            append(Kind::Double, qint64(large));
            m_tokens.back().isUnsigned = true;
            return true;
        }
        double value = 0;
        if (std::from_chars(text, end, value).ec != std::errc()) {
            value = QByteArrayView(text, length).toDouble(); // 0 below the range, infinite above it
        }
        return std::isfinite(value) && appendReal(value);
    }
    // The parser hands every number on as its text.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(int64_t) { return false; }
    bool Uint64(uint64_t) { return false; }
    bool Double(double) { return false; }
    bool String(const char *text, rapidjson::SizeType length, bool) {
        Token token{.text = text};
        token.kind = Kind::String;
        token.extent = length;
        m_tokens.push_back(token);
        return true;
    }
    bool Key(const char *text, rapidjson::SizeType length, bool copy) {
        return String(text, length, copy);
    }
    bool StartObject() { return open(Kind::Object); }
    bool EndObject(rapidjson::SizeType) { return close(); }
    bool StartArray() { return open(Kind::Array); }
    bool EndArray(rapidjson::SizeType) { return close(); }

  private:
    bool appendReal(double value) {
        // 2^63 itself is no 64-bit integer; a negative zero would lose its sign.
        constexpr double kLimit = 9223372036854775808.0;
        const bool isNegativeZero = value == 0 && std::signbit(value);
        const bool fits = value >= -kLimit && value < kLimit;
        if (fits && value == std::trunc(value) && !isNegativeZero) {
            return append(Kind::Int, qint64(value));
        }
        Token token{.real = value};
        token.kind = Kind::Double;
        m_tokens.push_back(token);
        return true;
    }
    bool append(Kind kind, qint64 value = 0) {
        Token token{.integer = value};
        token.kind = kind;
        m_tokens.push_back(token);
        return true;
    }
    bool open(Kind kind) {
        m_open.push_back(quint32(m_tokens.size()));
        return append(kind) && m_open.size() <= size_t(JSONDocument::kMaxNesting);
    }
    bool close() {
        m_tokens[m_open.back()].extent = quint32(m_tokens.size() - m_open.back());
        m_open.pop_back();
        return true;
    }

    std::vector<Token> &m_tokens;
    std::vector<quint32> m_open;
};

namespace {

// RapidJSON's vector instructions stay off: with them this version lets the control characters from
// 0x1A to 0x1F pass, unescaped when it writes and unrefused when it reads.
constexpr unsigned kParseFlags = rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag |
                                 rapidjson::kParseNumbersAsStringsFlag;

/// A document of many short values has about one token in each 16 bytes; starting there saves most
/// of the growing, and a text of fewer values wastes no more than its own size.
constexpr qsizetype kBytesPerToken = 16;

} // namespace

JSONDocument JSONDocument::parse(QByteArray bytes) {
    constexpr QByteArrayView kByteOrderMark("\xEF\xBB\xBF");
    const qsizetype begin = bytes.startsWith(kByteOrderMark) ? kByteOrderMark.size() : 0;
    const qsizetype size = bytes.size();
    if (!QUtf8StringView(bytes).isValidUtf8()) {
        throw JSONSyntaxError(QStringLiteral("The text is not valid UTF-8."));
    }
    JSONDocument document;
    document.m_bytes = std::move(bytes);
    document.m_tokens.reserve(size_t(size / kBytesPerToken));
    JSONTokenCollector collector(document.m_tokens);
    rapidjson::InsituStringStream stream(document.m_bytes.data() + begin);
    rapidjson::Reader reader;
    const auto result = reader.Parse<kParseFlags>(stream, collector);
    if (result.IsError()) {
        throw JSONSyntaxError(QStringLiteral("%1 At byte %2.")
                                  .arg(QLatin1String(rapidjson::GetParseError_En(result.Code())))
                                  .arg(result.Offset()));
    }
    // The parser takes a NUL for the end of the text.
    if (qsizetype(stream.Tell()) != size - begin) {
        throw JSONSyntaxError(QStringLiteral("A NUL character stands in the text."));
    }
    return document;
}

JSONDocument::View JSONDocument::root() const {
    return View(m_tokens.data());
}

std::optional<bool> JSONDocument::View::boolean() const {
    return kind() == Kind::Bool ? std::optional(m_token->integer != 0) : std::nullopt;
}

std::optional<qint64> JSONDocument::View::integer() const {
    return kind() == Kind::Int ? std::optional(m_token->integer) : std::nullopt;
}

std::optional<quint64> JSONDocument::View::unsignedInteger() const {
    const bool isWhole = m_token->isUnsigned || (kind() == Kind::Int && m_token->integer >= 0);
    return isWhole ? std::optional(quint64(m_token->integer)) : std::nullopt;
}

std::optional<double> JSONDocument::View::real() const {
    if (kind() == Kind::Int) {
        return double(m_token->integer);
    }
    if (m_token->isUnsigned) {
        return double(quint64(m_token->integer));
    }
    return kind() == Kind::Double ? std::optional(m_token->real) : std::nullopt;
}

std::optional<std::string_view> JSONDocument::View::string() const {
    return kind() == Kind::String ? std::optional(std::string_view(m_token->text, m_token->extent))
                                  : std::nullopt;
}

JSONValue JSONDocument::View::toValue() const {
    switch (kind()) {
    case Kind::Null:
        return {};
    case Kind::Bool:
        return m_token->integer != 0;
    case Kind::Int:
        return m_token->integer;
    case Kind::Double:
        return *real();
    case Kind::String:
        return QString::fromUtf8(m_token->text, m_token->extent);
    case Kind::Array:
        break;
    case Kind::Object: {
        JSONValue::Object object;
        forEachMember([&](std::string_view key, View member) {
            object.insert(QString::fromUtf8(key.data(), qsizetype(key.size())), member.toValue());
        });
        return object;
    }
    }
    JSONValue::Array array;
    forEachElement([&](View element) { array.append(element.toValue()); });
    return array;
}

} // namespace corvane
