#pragma once

#include "platform/Failure.h"
#include "platform/JSONValue.h"

#include <QByteArray>

#include <memory>
#include <string_view>

namespace corvane {

/// Thrown for a value without a JSON form: an infinite number or NaN.
class JSONEncodeError : public Failure {
  public:
    using Failure::Failure;
};

/// Writes JSON text in UTF-8, one value, key or bracket per call. The caller keeps the sequence of
/// calls well-formed. Slashes aren't escaped.
class JSONWriter {
  public:
    enum class Style {
        Pretty,  ///< indented by two spaces: documents, the recent list, manifests
        Compact, ///< one line without spaces: the registry of grants
    };

    explicit JSONWriter(Style style);
    ~JSONWriter();
    Q_DISABLE_COPY_MOVE(JSONWriter)

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void key(std::string_view utf8) { string(utf8); }
    void key(QStringView name) { string(name); }
    void null();
    void boolean(bool value);
    void integer(qint64 value);
    void unsignedInteger(quint64 value);
    /// Throws `JSONEncodeError` if the number is infinite or NaN.
    void real(double value);
    void string(QStringView value);
    void string(std::string_view utf8);
    void value(const JSONValue &value);

    /// Returns the text. The writer must not be used afterwards.
    QByteArray finish();

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace corvane
