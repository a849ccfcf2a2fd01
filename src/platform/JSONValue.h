#pragma once

#include <QList>
#include <QMap>
#include <QString>

#include <memory>
#include <optional>
#include <variant>

namespace corvane {

/// Any JSON value, as a plain value: one of seven cases. An integral number that fits 64 bits is an
/// `int`, any other number a `double`. Objects keep their keys sorted. Copies share storage.
class JSONValue {
  public:
    using Array = QList<JSONValue>;
    using Object = QMap<QString, JSONValue>;
    enum class Kind { Null, Bool, Int, Double, String, Array, Object };

    JSONValue() = default; ///< null
    JSONValue(std::nullptr_t) {}
    JSONValue(bool value) : m_value(value) {}
    JSONValue(int value) : m_value(qint64(value)) {}
    JSONValue(qint64 value) : m_value(value) {}
    JSONValue(double value) : m_value(value) {}
    JSONValue(QString value) : m_value(std::move(value)) {}
    JSONValue(Array value);
    JSONValue(Object value);

    /// An absent text is null.
    static JSONValue orNull(const std::optional<QString> &text) {
        return text ? JSONValue(*text) : JSONValue();
    }

    Kind kind() const { return Kind(m_value.index()); }
    bool isNull() const { return kind() == Kind::Null; }

    const bool *boolean() const { return std::get_if<bool>(&m_value); }
    const qint64 *integer() const { return std::get_if<qint64>(&m_value); }
    const double *real() const { return std::get_if<double>(&m_value); }
    const QString *string() const { return std::get_if<QString>(&m_value); }
    const Array *array() const;
    const Object *object() const;
    /// For changing in place; null where the value is of another kind.
    Array *array();
    Object *object();
    /// An `int` or a `double`, as a double; 0 for anything else.
    double number() const;

    bool operator==(const JSONValue &other) const;

  private:
    /// A list or map of an incomplete type can't stand in the variant, so it stands behind a
    /// pointer; what is pointed to is never changed while it is shared.
    using SharedArray = std::shared_ptr<Array>;
    using SharedObject = std::shared_ptr<Object>;

    std::variant<std::monostate, bool, qint64, double, QString, SharedArray, SharedObject> m_value;
};

size_t qHash(const JSONValue &value, size_t seed = 0);

} // namespace corvane
