#pragma once

#include "platform/VolumeLimits.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <functional>

namespace corvane {

/// Assigns unique file names within one run, as `uniqueExportName` would with the names assigned so
/// far. Remembers the next number to try for each name, so that a thousand files of one name take a
/// thousand steps and not a million. Ignores case. Not thread-safe.
class NameReserver {
  public:
    /// Returns the Unix time in seconds, the number of a name whose smaller numbers are all taken.
    using Seconds = std::function<qint64()>;

    /// Names are fitted to `limits`.
    explicit NameReserver(VolumeLimits limits = {}, Seconds now = systemSeconds);

    void reserveName(const QString &name);
    void reserveStem(const QString &stem);

    /// Reserves and returns a name that is free and whose stem is free.
    QString take(const QString &name);
    /// Reserves and returns a free name, for a file that shares its stem with another on purpose.
    QString takeBesideStem(const QString &name);

    /// The number of a name without a suffix.
    static constexpr qint64 kUnnumbered = 1;
    /// Returns the first free name, starting with `number`, and sets `number` to that name's. The
    /// sets contain lower-case text.
    static QString firstFree(const QString &name, const QSet<QString> &usedNames,
                             const QSet<QString> &usedStems, qint64 &number, const Seconds &now,
                             const VolumeLimits &limits = {});
    static qint64 systemSeconds();

  private:
    QString take(const QString &name, const QSet<QString> &stems, QHash<QString, qint64> &next);

    VolumeLimits m_limits;
    Seconds m_now;
    QSet<QString> m_usedNames; ///< lower case
    QSet<QString> m_usedStems; ///< lower case
    QHash<QString, qint64> m_nextNumber;
    QHash<QString, qint64> m_nextNumberBesideStem;
};

} // namespace corvane
