#include "platform/JSONRecord.h"

#include <limits>

namespace corvane {

JSONDecodeError::JSONDecodeError(const QString &problem, const QString &fieldPath)
    : Failure(fieldPath.isEmpty() ? problem : fieldPath + QStringLiteral(": ") + problem),
      m_problem(problem),
      m_fieldPath(fieldPath) {}

JSONDecodeError JSONDecodeError::within(const QString &outer) const {
    const bool needsPoint = !m_fieldPath.isEmpty() && !m_fieldPath.startsWith(QLatin1Char('['));
    return JSONDecodeError(m_problem, needsPoint ? outer + QLatin1Char('.') + m_fieldPath
                                                 : outer + m_fieldPath);
}

void throwExpected(const char *what) {
    throw JSONDecodeError(QStringLiteral("expected %1").arg(QLatin1String(what)));
}

void throwUnknownRawValue(std::string_view text) {
    throw JSONDecodeError(QStringLiteral("unknown value \"%1\"").arg(QString::fromUtf8(text)));
}

void throwMissing(std::string_view name) {
    throw JSONDecodeError(QStringLiteral("is missing"), QString::fromLatin1(name));
}

void JSONCodec<int>::decode(JSONView view, int &value) {
    const auto read = view.integer();
    if (!read || *read < std::numeric_limits<int>::min() ||
        *read > std::numeric_limits<int>::max()) {
        throwExpected("a whole number of 32 bits");
    }
    value = int(*read);
}

void JSONCodec<QDateTime>::decode(JSONView view, QDateTime &value) {
    const std::string_view text = expect(view.string(), "a text");
    const auto date = isoDate::fromText(text);
    if (!date) {
        throw JSONDecodeError(
            QStringLiteral("Invalid ISO-8601 date: %1").arg(QString::fromUtf8(text)));
    }
    value = *date;
}

void JSONCodec<QDateTime>::encode(JSONWriter &writer, const QDateTime &value) {
    char text[isoDate::kTextSize];
    isoDate::write(value, text);
    writer.string(std::string_view(text, sizeof text));
}

} // namespace corvane
