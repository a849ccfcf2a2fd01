#pragma once

#include "platform/JSONRecord.h"

/// Helpers for JSON objects that combine records with other members.
namespace corvane {

/// Writes one member; nullopt becomes null.
template <typename Value>
void writeMember(JSONWriter &writer, std::string_view key, const Value &value) {
    writer.key(key);
    JSONCodec<Value>::encode(writer, value);
}

/// Writes a member that is an array with an object for each row. `writeRow` writes its members.
template <typename Row, typename WriteRow>
void writeRows(JSONWriter &writer, std::string_view key, const QList<Row> &rows,
               WriteRow writeRow) {
    writer.key(key);
    writer.beginArray();
    for (const Row &row : rows) {
        writer.beginObject();
        writeRow(row);
        writer.endObject();
    }
    writer.endArray();
}

/// Writes all members of a record into the current object.
template <JSONRecord Record> void writeMembers(JSONWriter &writer, const Record &record) {
    std::apply(
        [&](const auto &...field) {
            (JSONCodec<Record>::encodeMember(writer, record, field), ...);
        },
        JSONFields<Record>::table);
}

} // namespace corvane
