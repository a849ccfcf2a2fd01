#pragma once

#include <QHash>
#include <QSet>
#include <QString>

#include <functional>

namespace corvane {

/// Hands out the names of one run, each once, as `uniqueExportName` would with the names handed out
/// so far. It remembers for each name which number is to be tried next, so that a thousand files of
/// one name cost a thousand steps and not a million. Case doesn't count.
class NameReserver {
  public:
    /// Unix time in whole seconds; it numbers a name that has used up its other numbers.
    using Seconds = std::function<qint64()>;

    explicit NameReserver(Seconds now = systemSeconds);

    void reserveName(const QString &name);
    void reserveStem(const QString &stem);

    /// A name that is free by name and by stem; it is reserved by this.
    QString take(const QString &name);
    /// A name that is free by name alone, for a file that shares its stem with another on purpose.
    QString takeBesideStem(const QString &name);

    /// The number of a name without one.
    static constexpr qint64 kUnnumbered = 1;
    /// The first free name from `number` on, which becomes the number of that name. Both sets hold
    /// lower-case text.
    static QString firstFree(const QString &name, const QSet<QString> &usedNames,
                             const QSet<QString> &usedStems, qint64 &number, const Seconds &now);
    static qint64 systemSeconds();

  private:
    QString take(const QString &name, const QSet<QString> &stems, QHash<QString, qint64> &next);

    Seconds m_now;
    QSet<QString> m_usedNames; ///< lower case
    QSet<QString> m_usedStems; ///< lower case
    QHash<QString, qint64> m_nextNumber;
    QHash<QString, qint64> m_nextNumberBesideStem;
};

} // namespace corvane
