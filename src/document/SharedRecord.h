#pragma once

#include "platform/JSONRecord.h"

#include <QSharedDataPointer>

namespace corvane {

/// A copy-on-write record: copies share storage until one of them is changed, so that copying a
/// document with thousands of records copies only pointers. `->` and `*` read without copying;
/// `edit()` detaches the storage from other copies for writing.
template <typename Record> class SharedRecord {
  public:
    SharedRecord() : m_data(new Data) {}
    SharedRecord(Record record) : m_data(new Data(std::move(record))) {}

    const Record *operator->() const { return &m_data->record; }
    const Record &operator*() const { return m_data->record; }
    Record &edit() { return m_data->record; }
    /// True if both share storage, and so are equal.
    bool isSharedWith(const SharedRecord &other) const {
        return m_data.constData() == other.m_data.constData();
    }

    bool operator==(const SharedRecord &other) const {
        return isSharedWith(other) || **this == *other;
    }

  private:
    struct Data : QSharedData {
        Data() = default;
        explicit Data(Record value) : record(std::move(value)) {}
        Record record;
    };
    QSharedDataPointer<Data> m_data;
};

template <typename Record> size_t qHash(const SharedRecord<Record> &value, size_t seed = 0) {
    return qHash(*value, seed);
}

template <typename Record> struct JSONCodec<SharedRecord<Record>> {
    static void decode(JSONView view, SharedRecord<Record> &value) {
        JSONCodec<Record>::decode(view, value.edit());
    }
    static void encode(JSONWriter &writer, const SharedRecord<Record> &value) {
        JSONCodec<Record>::encode(writer, *value);
    }
};

} // namespace corvane
