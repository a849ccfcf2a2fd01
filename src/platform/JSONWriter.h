#pragma once

#include "platform/Failure.h"
#include "platform/JSONValue.h"

#include <QByteArray>

#include <memory>
#include <string_view>

namespace corvane {

/// A value can't be written as JSON: a number that is infinite or none.
class JSONEncodeError : public Failure {
  public:
    using Failure::Failure;
};

/// Writes JSON text event by event. Slashes aren't escaped; text is UTF-8.
class JSONWriter {
  public:
    enum class Style {
        Pretty,  ///< indented by two blanks: documents, the recent list, manifests
        Compact, ///< one line: the registry of grants
    };

    explicit JSONWriter(Style style);
    ~JSONWriter();
    Q_DISABLE_COPY_MOVE(JSONWriter)

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void key(std::string_view utf8);
    void key(QStringView name);
    void null();
    void boolean(bool value);
    void integer(qint64 value);
    void unsignedInteger(quint64 value);
    /// Throws `JSONEncodeError` for a number that JSON can't hold.
    void real(double value);
    void string(QStringView value);
    void string(std::string_view utf8);
    void value(const JSONValue &value);

    /// The text so far; the writer is used up.
    QByteArray finish();

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace corvane
