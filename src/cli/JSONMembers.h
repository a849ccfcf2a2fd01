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

/// Writes all members of a record into the current object.
template <JSONRecord Record> void writeMembers(JSONWriter &writer, const Record &record) {
    std::apply(
        [&](const auto &...field) {
            (JSONCodec<Record>::encodeMember(writer, record, field), ...);
        },
        JSONFields<Record>::table);
}

} // namespace corvane
