#include "platform/JSONDocument.h"

#include <QUtf8StringView>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

namespace corvane {

/// Appends a token for each parser event. Returning false aborts the parse.
class JSONTokenCollector {
  public:
    using Token = JSONDocument::Token;
    using Kind = JSONDocument::Kind;

    explicit JSONTokenCollector(std::vector<Token> &tokens) : m_tokens(tokens) {}

    bool Null() { return append(Kind::Null); }
    bool Bool(bool value) { return append(Kind::Bool, qint64(value)); }
    /// Converts a number whose syntax the parser has checked. The standard library's conversion is
    /// exact; the parser's own full-precision conversion has undefined behavior for a zero with an
    /// exponent ("0e86").
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
            value = QByteArrayView(text, length).toDouble(); // out of range: 0 or infinite
        }
        return std::isfinite(value) && appendReal(value);
    }
    // Unused: kParseNumbersAsStringsFlag passes every number to RawNumber.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(int64_t) { return false; }
    bool Uint64(uint64_t) { return false; }
    bool Double(double) { return false; }
    bool String(const char *text, rapidjson::SizeType length, bool) {
        Token token{.text = text};
        token.extent = length;
        return append(Kind::String, token);
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
        // 2^63 doesn't fit in 64 bits, and an integer has no negative zero.
        constexpr double kLimit = 9223372036854775808.0;
        const bool isNegativeZero = value == 0 && std::signbit(value);
        const bool fits = value >= -kLimit && value < kLimit;
        if (fits && value == std::trunc(value) && !isNegativeZero) {
            return append(Kind::Int, qint64(value));
        }
        return append(Kind::Double, Token{.real = value});
    }
    bool append(Kind kind, qint64 value = 0) { return append(kind, Token{.integer = value}); }
    bool append(Kind kind, Token token) {
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

// RapidJSON's SIMD code stays disabled: in this version it misses the control characters from 0x1A
// to 0x1F, so the writer wouldn't escape them and the reader wouldn't reject them.
constexpr unsigned kParseFlags = rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag |
                                 rapidjson::kParseNumbersAsStringsFlag;

/// Project documents have about one token per 16 bytes. Reserving that many avoids most
/// reallocations and takes no more memory than the text itself.
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
    // The parser stops at a NUL as at the end of the text.
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
            object.insert(QString::fromUtf8(key), member.toValue());
        });
        return object;
    }
    }
    JSONValue::Array array;
    forEachElement([&](View element) { array.append(element.toValue()); });
    return array;
}

} // namespace corvane
