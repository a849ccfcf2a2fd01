#pragma once

#include "platform/JSONRecord.h"

/// Members of a JSON object that is written by hand around records.
namespace corvane {

/// One member; an absent value is written as null.
template <typename Value>
void writeMember(JSONWriter &writer, std::string_view key, const Value &value) {
    writer.key(key);
    JSONCodec<Value>::encode(writer, value);
}

/// All members of a record, as its own object has them.
template <JSONRecord Record> void writeMembers(JSONWriter &writer, const Record &record) {
    std::apply(
        [&](const auto &...field) {
            (JSONCodec<Record>::encodeMember(writer, record, field), ...);
        },
        JSONFields<Record>::table);
}

} // namespace corvane
