#pragma once

#include "platform/ISODate.h"
#include "platform/JSONDocument.h"
#include "platform/JSONWriter.h"

#include <QDateTime>
#include <QHash>
#include <QList>
#include <QMap>
#include <QString>

#include <array>
#include <bitset>
#include <optional>
#include <tuple>

/// Conversion between C++ values and JSON text.
///
/// `decodeJSON` and `encodeJSON` at the end of this header convert any type that has a `JSONCodec`:
/// booleans, numbers, texts, dates, `JSONValue`, enumerations, records, and `std::optional`,
/// `QList`, `QMap` and `QHash` of these.
///
/// A record is a plain struct with a table of its members, in the order in which the encoder writes
/// them. Each member's name is also its key, so renaming one changes the format:
///
///     CORVANE_JSON_FIELDS(Point, x, label);
///
/// A member of type `std::optional` may be missing or null, and is omitted if it is nullopt. Every
/// other member is required and always written. The decoder ignores keys that aren't in the table,
/// and of a key that occurs twice uses the last value.
///
/// An enumeration has a table of the texts of its values:
///
///     template <> inline constexpr auto rawValues<Shape> = std::to_array<RawValue<Shape>>({
///         {Shape::circle, "circle"},
///         {Shape::square, "square"},
///     });
namespace corvane {

/// Thrown if a JSON value doesn't have the form that the C++ type requires. The description is the
/// path of the field and the problem: "videos[3].fps: expected a number".
class JSONDecodeError : public Failure {
  public:
    explicit JSONDecodeError(const QString &problem, const QString &fieldPath = {});

    /// Returns this error with the field path extended by the enclosing member's name or array
    /// index ("[3]").
    JSONDecodeError within(const QString &outer) const;

  private:
    QString m_problem;
    QString m_fieldPath;
};

template <typename Record, typename Member> struct JSONField {
    std::string_view name;
    Member Record::*member;
};

template <typename Record, typename Member>
constexpr JSONField<Record, Member> jsonField(std::string_view name, Member Record::*member) {
    return {name, member};
}

template <typename Record> struct JSONFields;
template <typename Record>
concept JSONRecord = requires { JSONFields<Record>::table; };

// The preprocessor has no loops: each of the 64 scans that `CORVANE_JSON_SCAN` causes adds a
// member.
#define CORVANE_JSON_SCAN_1(...) __VA_ARGS__
#define CORVANE_JSON_SCAN_4(...)                                                                   \
    CORVANE_JSON_SCAN_1(CORVANE_JSON_SCAN_1(CORVANE_JSON_SCAN_1(CORVANE_JSON_SCAN_1(__VA_ARGS__))))
#define CORVANE_JSON_SCAN_16(...)                                                                  \
    CORVANE_JSON_SCAN_4(CORVANE_JSON_SCAN_4(CORVANE_JSON_SCAN_4(CORVANE_JSON_SCAN_4(__VA_ARGS__))))
#define CORVANE_JSON_SCAN(...)                                                                     \
    CORVANE_JSON_SCAN_16(                                                                          \
        CORVANE_JSON_SCAN_16(CORVANE_JSON_SCAN_16(CORVANE_JSON_SCAN_16(__VA_ARGS__))))
#define CORVANE_JSON_PARENTHESES ()
#define CORVANE_JSON_MEMBERS_AGAIN() CORVANE_JSON_MEMBERS
#define CORVANE_JSON_MEMBERS(Record, member, ...)                                                  \
    jsonField(#member, &Record::member)                                                            \
        __VA_OPT__(, CORVANE_JSON_MEMBERS_AGAIN CORVANE_JSON_PARENTHESES(Record, __VA_ARGS__))
#define CORVANE_JSON_FIELDS(Record, ...)                                                           \
    template <> struct JSONFields<Record> {                                                        \
        static constexpr auto table =                                                              \
            std::tuple(CORVANE_JSON_SCAN(CORVANE_JSON_MEMBERS(Record, __VA_ARGS__)));              \
    }

template <typename Enumeration> using RawValue = std::pair<Enumeration, std::string_view>;
template <typename Enumeration> constexpr auto rawValues = nullptr; ///< if it has no table
template <typename Enumeration>
concept RawRepresentable =
    !std::is_null_pointer_v<std::remove_const_t<decltype(rawValues<Enumeration>)>>;

/// The text of a value; empty for a value that isn't in the table.
template <RawRepresentable Enumeration> constexpr std::string_view rawText(Enumeration value) {
    for (const auto &[known, text] : rawValues<Enumeration>) {
        if (known == value) {
            return text;
        }
    }
    return {};
}

template <RawRepresentable Enumeration> QString rawValue(Enumeration value) {
    return QString::fromLatin1(rawText(value));
}

/// The value with this text; nullopt for a text that isn't in the table.
template <RawRepresentable Enumeration>
constexpr std::optional<Enumeration> fromRawValue(std::string_view text) {
    for (const auto &[known, raw] : rawValues<Enumeration>) {
        if (raw == text) {
            return known;
        }
    }
    return std::nullopt;
}

template <typename Value> struct IsOptional : std::false_type {};
template <typename Value> struct IsOptional<std::optional<Value>> : std::true_type {};

/// Reads and writes values of one type. `decode` throws `JSONDecodeError`, `encode` throws
/// `JSONEncodeError`.
template <typename Value> struct JSONCodec;

/// Throws `JSONDecodeError` "expected <what>".
[[noreturn]] void throwExpected(const char *what);

/// Returns the value; throws `JSONDecodeError` "expected <what>" for nullopt.
template <typename Value> Value expect(std::optional<Value> value, const char *what) {
    if (!value) {
        throwExpected(what);
    }
    return *value;
}

template <> struct JSONCodec<bool> {
    static void decode(JSONView view, bool &value) {
        value = expect(view.boolean(), "true or false");
    }
    static void encode(JSONWriter &writer, bool value) { writer.boolean(value); }
};
template <> struct JSONCodec<int> {
    static void decode(JSONView view, int &value);
    static void encode(JSONWriter &writer, int value) { writer.integer(value); }
};
template <> struct JSONCodec<qint64> {
    static void decode(JSONView view, qint64 &value) {
        value = expect(view.integer(), "a whole number");
    }
    static void encode(JSONWriter &writer, qint64 value) { writer.integer(value); }
};
template <> struct JSONCodec<quint64> {
    static void decode(JSONView view, quint64 &value) {
        value = expect(view.unsignedInteger(), "a whole number that isn't negative");
    }
    static void encode(JSONWriter &writer, quint64 value) { writer.unsignedInteger(value); }
};
template <> struct JSONCodec<double> {
    static void decode(JSONView view, double &value) { value = expect(view.real(), "a number"); }
    static void encode(JSONWriter &writer, double value) { writer.real(value); }
};
template <> struct JSONCodec<QString> {
    static void decode(JSONView view, QString &value) {
        value = QString::fromUtf8(expect(view.string(), "a text"));
    }
    static void encode(JSONWriter &writer, const QString &value) { writer.string(value); }
};
template <> struct JSONCodec<QDateTime> {
    static void decode(JSONView view, QDateTime &value);
    static void encode(JSONWriter &writer, const QDateTime &value);
};
template <> struct JSONCodec<JSONValue> {
    static void decode(JSONView view, JSONValue &value) { value = view.toValue(); }
    static void encode(JSONWriter &writer, const JSONValue &value) { writer.value(value); }
};

// Throw `JSONDecodeError` for a text that isn't in a `rawValues` table, and for a required member
// that is missing or null.
[[noreturn]] void throwUnknownRawValue(std::string_view text);
[[noreturn]] void throwMissing(std::string_view name);

template <RawRepresentable Enumeration> struct JSONCodec<Enumeration> {
    static void decode(JSONView view, Enumeration &value) {
        const std::string_view text = expect(view.string(), "a text");
        const auto known = fromRawValue<Enumeration>(text);
        if (!known) {
            throwUnknownRawValue(text);
        }
        value = *known;
    }
    static void encode(JSONWriter &writer, Enumeration value) { writer.string(rawText(value)); }
};

template <typename Value> struct JSONCodec<std::optional<Value>> {
    static void decode(JSONView view, std::optional<Value> &value) {
        if (view.isNull()) {
            value.reset();
        } else {
            JSONCodec<Value>::decode(view, value.emplace());
        }
    }
    static void encode(JSONWriter &writer, const std::optional<Value> &value) {
        if (value) {
            JSONCodec<Value>::encode(writer, *value);
        } else {
            writer.null();
        }
    }
};

template <typename Value> struct JSONCodec<QList<Value>> {
    static void decode(JSONView view, QList<Value> &list) {
        if (view.kind() != JSONView::Kind::Array) {
            throwExpected("an array");
        }
        list.clear();
        view.forEachElement([&list](JSONView element) {
            try {
                JSONCodec<Value>::decode(element, list.emplaceBack());
            } catch (const JSONDecodeError &error) {
                throw error.within(QStringLiteral("[%1]").arg(list.size() - 1));
            }
        });
    }
    static void encode(JSONWriter &writer, const QList<Value> &list) {
        writer.beginArray();
        for (const Value &element : list) {
            JSONCodec<Value>::encode(writer, element);
        }
        writer.endArray();
    }
};

/// An object whose keys are data, as a `QMap` or a `QHash`. If a key occurs twice, the last value
/// counts.
template <typename Map> struct JSONMapCodec {
    using Value = typename Map::mapped_type;

    static void decode(JSONView view, Map &map) {
        if (view.kind() != JSONView::Kind::Object) {
            throwExpected("an object");
        }
        map.clear();
        view.forEachMember([&map](std::string_view key, JSONView member) {
            const QString name = QString::fromUtf8(key);
            try {
                Value value{};
                JSONCodec<Value>::decode(member, value);
                map.insert(name, std::move(value));
            } catch (const JSONDecodeError &error) {
                throw error.within(name);
            }
        });
    }
    static void encode(JSONWriter &writer, const Map &map) {
        writer.beginObject();
        for (auto [name, member] : map.asKeyValueRange()) {
            writer.key(QStringView(name));
            JSONCodec<Value>::encode(writer, member);
        }
        writer.endObject();
    }
};

template <typename Value>
struct JSONCodec<QMap<QString, Value>> : JSONMapCodec<QMap<QString, Value>> {};
template <typename Value>
struct JSONCodec<QHash<QString, Value>> : JSONMapCodec<QHash<QString, Value>> {};

template <JSONRecord Record> struct JSONCodec<Record> {
    static constexpr size_t kFields = std::tuple_size_v<decltype(JSONFields<Record>::table)>;

    struct Entry {
        std::string_view name;
        bool isRequired;
        void (*decode)(JSONView, Record &, bool isRepeated);
    };

    template <size_t Index> static constexpr Entry entry() {
        static constexpr auto field = std::get<Index>(JSONFields<Record>::table);
        using Member = std::remove_cvref_t<decltype(std::declval<Record &>().*field.member)>;
        return {field.name, !IsOptional<Member>::value,
                [](JSONView view, Record &record, bool isRepeated) {
                    if (isRepeated) { // drops the optional members of the first value
                        record.*field.member = Member();
                    }
                    JSONCodec<Member>::decode(view, record.*field.member);
                }};
    }

    static constexpr auto entries = []<size_t... Index>(std::index_sequence<Index...>) {
        return std::array<Entry, kFields>{entry<Index>()...};
    }(std::make_index_sequence<kFields>());

    /// The index of a key in the table, or `kFields`. Most files have the table's order, so the
    /// search starts at `begin`, the index after the previous match, and wraps around.
    static size_t find(std::string_view key, size_t begin) {
        for (size_t step = 0; step < kFields; ++step) {
            const size_t index = begin + step < kFields ? begin + step : begin + step - kFields;
            if (entries[index].name == key) {
                return index;
            }
        }
        return kFields;
    }

    static void decode(JSONView view, Record &record) {
        if (view.kind() != JSONView::Kind::Object) {
            throwExpected("an object");
        }
        std::bitset<kFields> present;
        size_t next = 0;
        view.forEachMember([&](std::string_view key, JSONView member) {
            const size_t index = find(key, next);
            if (index == kFields) {
                return;
            }
            next = index + 1 == kFields ? 0 : index + 1;
            decodeMember(entries[index], member, record, present.test(index));
            present.set(index, !member.isNull());
        });
        for (size_t index = 0; index < kFields; ++index) {
            if (entries[index].isRequired && !present.test(index)) {
                throwMissing(entries[index].name);
            }
        }
    }

    static void decodeMember(const Entry &entry, JSONView member, Record &record, bool isRepeated) {
        if (entry.isRequired && member.isNull()) {
            return; // reported as missing once all members have been read
        }
        try {
            entry.decode(member, record, isRepeated);
        } catch (const JSONDecodeError &error) {
            throw error.within(QString::fromLatin1(entry.name));
        }
    }

    static void encode(JSONWriter &writer, const Record &record) {
        writer.beginObject();
        std::apply([&](const auto &...field) { (encodeMember(writer, record, field), ...); },
                   JSONFields<Record>::table);
        writer.endObject();
    }

    template <typename Owner, typename Member>
    static void encodeMember(JSONWriter &writer, const Record &record,
                             const JSONField<Owner, Member> &field) {
        const Member &member = record.*field.member;
        if constexpr (IsOptional<Member>::value) {
            if (!member) {
                return;
            }
        }
        writer.key(field.name);
        JSONCodec<Member>::encode(writer, member);
    }
};

/// Converts a parsed JSON value. Throws `JSONDecodeError`.
template <typename Value> Value decodeJSON(JSONView view) {
    Value value{};
    JSONCodec<Value>::decode(view, value);
    return value;
}

/// Converts a value to JSON text in UTF-8. Throws `JSONEncodeError`.
template <typename Value>
QByteArray encodeJSON(const Value &value, JSONWriter::Style style = JSONWriter::Style::Pretty) {
    JSONWriter writer(style);
    JSONCodec<Value>::encode(writer, value);
    return writer.finish();
}

/// Converts a value to a tree with exactly the content that `encodeJSON` would write. Throws
/// `JSONEncodeError`.
template <typename Value> JSONValue toJSONValue(const Value &value) {
    return JSONDocument::parse(encodeJSON(value, JSONWriter::Style::Compact)).root().toValue();
}

} // namespace corvane
