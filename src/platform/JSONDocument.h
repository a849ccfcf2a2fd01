#pragma once

#include "platform/Failure.h"
#include "platform/JSONValue.h"

#include <QByteArray>

#include <optional>
#include <string_view>
#include <vector>

namespace corvane {

/// The text is no JSON: malformed, not in UTF-8, or nested deeper than 512 levels.
class JSONSyntaxError : public Failure {
  public:
    using Failure::Failure;
};

/// A parsed JSON text as a flat list of tokens, which costs one append for each value. Decoders
/// walk it with `JSONView`s; `toValue` makes the free-standing tree where one is needed.
class JSONDocument {
  public:
    static constexpr int kMaxNesting = 512;

    /// Parses in place: the strings of the tokens point into the document's own copy of the bytes.
    /// Throws `JSONSyntaxError`.
    static JSONDocument parse(QByteArray bytes);

    class View;
    View root() const;

  private:
    friend class JSONTokenCollector;
    friend class View;

    enum class Kind : quint8 { Null, Bool, Int, Double, String, Array, Object };
    /// `extent` is a string's length in bytes, or how many tokens a container takes, itself
    /// included. An object holds its keys as strings before their values.
    struct Token {
        union {
            qint64 integer;
            double real;
            const char *text;
        };
        quint32 extent = 1;
        Kind kind = Kind::Null;
        /// A whole number too large for 63 bits: a `Double` to all but `unsignedInteger`.
        bool isUnsigned = false;
    };

    QByteArray m_bytes;
    std::vector<Token> m_tokens;
};

/// One value of a document. Valid as long as the document lives.
class JSONDocument::View {
  public:
    using Kind = JSONValue::Kind;

    Kind kind() const { return Kind(m_token->kind); }
    bool isNull() const { return kind() == Kind::Null; }
    std::optional<bool> boolean() const;
    /// A number without a fraction that fits 64 bits.
    std::optional<qint64> integer() const;
    /// A whole number from 0 that fits 64 bits.
    std::optional<quint64> unsignedInteger() const;
    std::optional<double> real() const;
    /// The UTF-8 text of a string; nothing for other kinds.
    std::optional<std::string_view> string() const;
    JSONValue toValue() const;

    /// Calls `each(key, view)` for the members of an object in the text's order; a key that stands
    /// twice comes twice. Does nothing for other kinds.
    template <typename Each> void forEachMember(Each each) const {
        if (kind() != Kind::Object) {
            return;
        }
        const Token *const end = m_token + m_token->extent;
        for (const Token *key = m_token + 1; key != end;) {
            const View member(key + 1);
            each(std::string_view(key->text, key->extent), member);
            key = member.behind();
        }
    }
    /// Calls `each(view)` for the elements of an array. Does nothing for other kinds.
    template <typename Each> void forEachElement(Each each) const {
        if (kind() != Kind::Array) {
            return;
        }
        const Token *const end = m_token + m_token->extent;
        for (const Token *element = m_token + 1; element != end;) {
            const View view(element);
            each(view);
            element = view.behind();
        }
    }

  private:
    friend class JSONDocument;
    explicit View(const Token *token) : m_token(token) {}
    /// The token behind this value. Strings are one token whatever their length.
    const Token *behind() const {
        return m_token + (kind() == Kind::Array || kind() == Kind::Object ? m_token->extent : 1);
    }

    const Token *m_token;
};

using JSONView = JSONDocument::View;

} // namespace corvane
