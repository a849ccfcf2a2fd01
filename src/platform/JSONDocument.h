#pragma once

#include "platform/Failure.h"
#include "platform/JSONValue.h"

#include <QByteArray>

#include <optional>
#include <string_view>
#include <vector>

namespace corvane {

/// Thrown for a text that isn't JSON: malformed, not UTF-8, or nested deeper than 512 levels.
class JSONSyntaxError : public Failure {
  public:
    using Failure::Failure;
};

/// A parsed JSON text, stored as a flat list with one token per value and per key. Decoders read it
/// through `JSONView`s; `View::toValue` builds a tree that can outlive the document.
class JSONDocument {
  public:
    static constexpr int kMaxNesting = 512; ///< of arrays and objects

    /// Parses UTF-8 text with or without a byte order mark. A byte array that isn't shared is
    /// parsed in place and not copied. Throws `JSONSyntaxError`.
    static JSONDocument parse(QByteArray bytes);

    class View;
    View root() const;

  private:
    friend class JSONTokenCollector;
    friend class View;

    using Kind = JSONValue::Kind;
    /// In an object, each key is a string token before the tokens of its value.
    struct Token {
        union {
            qint64 integer;
            double real;
            const char *text; ///< UTF-8, in `m_bytes`
        };
        /// The length of a string in bytes; the number of tokens of a container with its content.
        quint32 extent = 1;
        Kind kind = Kind::Null;
        /// An integer from 2^63 to 2^64 - 1: a `Double` except to `unsignedInteger`.
        bool isUnsigned = false;
    };

    QByteArray m_bytes;
    std::vector<Token> m_tokens;
};

/// A value in a document. A plain pointer, valid for the document's lifetime. The typed accessors
/// return nullopt for a value of another kind.
class JSONDocument::View {
  public:
    using Kind = JSONValue::Kind;

    Kind kind() const { return m_token->kind; }
    bool isNull() const { return kind() == Kind::Null; }
    std::optional<bool> boolean() const;
    /// A number without a fractional part that fits in 64 bits, however it is written ("3.0").
    std::optional<qint64> integer() const;
    /// Likewise, from 0.
    std::optional<quint64> unsignedInteger() const;
    /// Any number.
    std::optional<double> real() const;
    std::optional<std::string_view> string() const; ///< UTF-8
    JSONValue toValue() const;

    /// Calls `each(key, view)` for each member of an object in the order of the text, duplicate
    /// keys included. A no-op for other kinds.
    template <typename Each> void forEachMember(Each each) const {
        if (kind() != Kind::Object) {
            return;
        }
        const Token *const end = m_token + m_token->extent;
        for (const Token *key = m_token + 1; key != end;) {
            const View member(key + 1);
            each(std::string_view(key->text, key->extent), member);
            key = member.next();
        }
    }
    /// Calls `each(view)` for each element of an array. A no-op for other kinds.
    template <typename Each> void forEachElement(Each each) const {
        if (kind() != Kind::Array) {
            return;
        }
        const Token *const end = m_token + m_token->extent;
        for (const Token *element = m_token + 1; element != end;) {
            const View view(element);
            each(view);
            element = view.next();
        }
    }

  private:
    friend class JSONDocument;
    explicit View(const Token *token) : m_token(token) {}
    /// The first token after this value.
    const Token *next() const {
        return m_token + (kind() == Kind::Array || kind() == Kind::Object ? m_token->extent : 1);
    }

    const Token *m_token;
};

using JSONView = JSONDocument::View;

} // namespace corvane
