#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace corvane {

/// Formats values that only QML has. View models format theirs with platform/TextFormat.h.
/// Main thread.
class Format : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    using QObject::QObject;

    /// "1 clip", "2 clips".
    Q_INVOKABLE static QString counted(int count, const QString &singular);

    /// "38%" for 0.38. Clamps to 0..1; a fraction that isn't finite counts as 0.
    Q_INVOKABLE static QString percent(double fraction);

    /// True for an ISO date such as "2025-06-13".
    Q_INVOKABLE static bool isDay(const QString &date);

    /// The text as `Text.StyledText` with the character at `index` underlined. -1 is allowed.
    Q_INVOKABLE static QString underlined(const QString &text, int index);

    /// A portable shortcut such as "Ctrl+Shift+E" as the desktop writes it.
    Q_INVOKABLE static QString keys(const QString &shortcut);
};

} // namespace corvane
