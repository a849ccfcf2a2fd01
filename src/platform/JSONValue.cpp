#include "platform/JSONValue.h"

#include <QHash>

namespace corvane {

namespace {

template <typename Content> Content *unshared(std::shared_ptr<Content> *shared) {
    if (!shared) {
        return nullptr;
    }
    if (shared->use_count() > 1) {
        *shared = std::make_shared<Content>(**shared);
    }
    return shared->get();
}

} // namespace

JSONValue::JSONValue(Array value) : m_value(std::make_shared<Array>(std::move(value))) {}
JSONValue::JSONValue(Object value) : m_value(std::make_shared<Object>(std::move(value))) {}

const JSONValue::Array *JSONValue::array() const {
    const auto *shared = std::get_if<SharedArray>(&m_value);
    return shared ? shared->get() : nullptr;
}

const JSONValue::Object *JSONValue::object() const {
    const auto *shared = std::get_if<SharedObject>(&m_value);
    return shared ? shared->get() : nullptr;
}

JSONValue::Array *JSONValue::array() {
    return unshared(std::get_if<SharedArray>(&m_value));
}

JSONValue::Object *JSONValue::object() {
    return unshared(std::get_if<SharedObject>(&m_value));
}

double JSONValue::number() const {
    if (const qint64 *whole = integer()) {
        return double(*whole);
    }
    const double *value = real();
    return value ? *value : 0.0;
}

bool JSONValue::operator==(const JSONValue &other) const {
    if (const Array *mine = array()) {
        const Array *theirs = other.array();
        return theirs && *mine == *theirs;
    }
    if (const Object *mine = object()) {
        const Object *theirs = other.object();
        return theirs && *mine == *theirs;
    }
    return m_value == other.m_value;
}

size_t qHash(const JSONValue &value, size_t seed) {
    switch (value.kind()) {
    case JSONValue::Kind::Null:
        return seed;
    case JSONValue::Kind::Bool:
        return ::qHash(*value.boolean(), seed);
    case JSONValue::Kind::Int:
        return ::qHash(*value.integer(), seed);
    case JSONValue::Kind::Double:
        return ::qHash(*value.real(), seed);
    case JSONValue::Kind::String:
        return ::qHash(*value.string(), seed);
    case JSONValue::Kind::Array:
        return qHashRange(value.array()->begin(), value.array()->end(), seed);
    case JSONValue::Kind::Object:
        break;
    }
    for (auto [key, member] : value.object()->asKeyValueRange()) {
        seed = qHashMulti(seed, key, member);
    }
    return seed;
}

} // namespace corvane
