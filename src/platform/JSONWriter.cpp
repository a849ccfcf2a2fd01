#include "platform/JSONWriter.h"

#include <QStringEncoder>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace corvane {

namespace {

using Pretty = rapidjson::PrettyWriter<rapidjson::StringBuffer>;
using Compact = rapidjson::Writer<rapidjson::StringBuffer>;

} // namespace

struct JSONWriter::State {
    explicit State(Style chosen) : style(chosen), pretty(buffer), compact(buffer) {
        pretty.SetIndent(' ', 2);
    }

    /// Calls `event` with the writer of this style; RapidJSON's writers have no common base.
    template <typename Event> bool write(Event event) {
        return style == Style::Pretty ? event(pretty) : event(compact);
    }
    /// Converts a text to UTF-8 in `scratch`; valid until the next call.
    std::string_view utf8(QStringView text) {
        scratch.resize(text.size() * 3 + 3);
        QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
        const char *const end = encoder.appendToBuffer(scratch.data(), text);
        return {scratch.constData(), size_t(end - scratch.constData())};
    }

    Style style;
    rapidjson::StringBuffer buffer;
    Pretty pretty;
    Compact compact;
    QByteArray scratch;
};

JSONWriter::JSONWriter(Style style) : m_state(std::make_unique<State>(style)) {}
JSONWriter::~JSONWriter() = default;

void JSONWriter::beginObject() {
    m_state->write([](auto &writer) { return writer.StartObject(); });
}

void JSONWriter::endObject() {
    m_state->write([](auto &writer) { return writer.EndObject(); });
}

void JSONWriter::beginArray() {
    m_state->write([](auto &writer) { return writer.StartArray(); });
}

void JSONWriter::endArray() {
    m_state->write([](auto &writer) { return writer.EndArray(); });
}

void JSONWriter::null() {
    m_state->write([](auto &writer) { return writer.Null(); });
}

void JSONWriter::boolean(bool value) {
    m_state->write([value](auto &writer) { return writer.Bool(value); });
}

void JSONWriter::integer(qint64 value) {
    m_state->write([value](auto &writer) { return writer.Int64(value); });
}

void JSONWriter::unsignedInteger(quint64 value) {
    m_state->write([value](auto &writer) { return writer.Uint64(value); });
}

void JSONWriter::real(double value) {
    if (!m_state->write([value](auto &writer) { return writer.Double(value); })) {
        throw JSONEncodeError(QStringLiteral("A number is infinite or not a number."));
    }
}

void JSONWriter::string(QStringView value) {
    string(m_state->utf8(value));
}

void JSONWriter::string(std::string_view utf8) {
    m_state->write([utf8](auto &writer) {
        return writer.String(utf8.data(), rapidjson::SizeType(utf8.size()));
    });
}

void JSONWriter::value(const JSONValue &value) {
    switch (value.kind()) {
    case JSONValue::Kind::Null:
        return null();
    case JSONValue::Kind::Bool:
        return boolean(*value.boolean());
    case JSONValue::Kind::Int:
        return integer(*value.integer());
    case JSONValue::Kind::Double:
        return real(*value.real());
    case JSONValue::Kind::String:
        return string(*value.string());
    case JSONValue::Kind::Array:
        beginArray();
        for (const JSONValue &element : *value.array()) {
            this->value(element);
        }
        return endArray();
    case JSONValue::Kind::Object:
        beginObject();
        for (auto [name, member] : value.object()->asKeyValueRange()) {
            key(QStringView(name));
            this->value(member);
        }
        return endObject();
    }
}

QByteArray JSONWriter::finish() {
    return QByteArray(m_state->buffer.GetString(), qsizetype(m_state->buffer.GetSize()));
}

} // namespace corvane
