#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include <memory>
#include <optional>
#include <variant>

namespace corvane {

/// A JSON value of any kind, as a plain value. Numbers without a fractional part that fit in 64
/// bits are of kind `Int`, all others `Double`. Objects are sorted by key. Copies share storage.
class JSONValue {
  public:
    using Array = QList<JSONValue>;
    using Object = QMap<QString, JSONValue>;
    enum class Kind : quint8 { Null, Bool, Int, Double, String, Array, Object };

    JSONValue() = default; ///< null
    JSONValue(std::nullptr_t) {}
    JSONValue(bool value) : m_value(value) {}
    JSONValue(int value) : m_value(qint64(value)) {}
    JSONValue(qint64 value) : m_value(value) {}
    JSONValue(double value) : m_value(value) {}
    JSONValue(QString value) : m_value(std::move(value)) {}
    JSONValue(Array value);
    JSONValue(Object value);

    /// Null for nullopt.
    static JSONValue orNull(const std::optional<QString> &text) {
        return text ? JSONValue(*text) : JSONValue();
    }

    Kind kind() const { return Kind(m_value.index()); }
    bool isNull() const { return kind() == Kind::Null; }

    // Each returns nullptr for a value of another kind. The non-const overloads detach the content
    // from copies of this value.
    const bool *boolean() const { return std::get_if<bool>(&m_value); }
    const qint64 *integer() const { return std::get_if<qint64>(&m_value); }
    const double *real() const { return std::get_if<double>(&m_value); }
    const QString *string() const { return std::get_if<QString>(&m_value); }
    const Array *array() const;
    const Object *object() const;
    Array *array();
    Object *object();
    /// A number of either kind; 0 for other kinds.
    double number() const;

    bool operator==(const JSONValue &other) const;

  private:
    // Behind pointers because `JSONValue` is incomplete here. Shared content is never changed.
    using SharedArray = std::shared_ptr<Array>;
    using SharedObject = std::shared_ptr<Object>;

    std::variant<std::monostate, bool, qint64, double, QString, SharedArray, SharedObject> m_value;
};

size_t qHash(const JSONValue &value, size_t seed = 0);

} // namespace corvane
