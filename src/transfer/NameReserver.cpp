#include "transfer/NameReserver.h"

#include "platform/Paths.h"

#include <QDateTime>

namespace corvane {

namespace {

/// Larger numbers are replaced by the time.
constexpr qint64 kLargestNumber = 9999;

QString numberSuffix(qint64 number) {
    return number == NameReserver::kUnnumbered
               ? QString()
               : QStringLiteral(" (") + QString::number(number) + QLatin1Char(')');
}

} // namespace

NameReserver::NameReserver(VolumeLimits limits, Seconds now)
    : m_limits(limits), m_now(std::move(now)) {}

void NameReserver::reserveName(const QString &name) {
    m_usedNames.insert(name.toLower());
}
void NameReserver::reserveStem(const QString &stem) {
    m_usedStems.insert(stem.toLower());
}

QString NameReserver::take(const QString &name) {
    return take(name, m_usedStems, m_nextNumber);
}

QString NameReserver::takeBesideStem(const QString &name) {
    return take(name, {}, m_nextNumberBesideStem);
}

QString NameReserver::take(const QString &name, const QSet<QString> &stems,
                           QHash<QString, qint64> &next) {
    // Names and stems are never released, so a number that was taken need not be tried again.
    const QString key = name.toLower();
    qint64 number = next.value(key, kUnnumbered);
    const QString free = firstFree(name, m_usedNames, stems, number, m_now, m_limits);
    next.insert(key, number + 1);
    m_usedNames.insert(free.toLower());
    return free;
}

QString NameReserver::firstFree(const QString &name, const QSet<QString> &usedNames,
                                const QSet<QString> &usedStems, qint64 &number, const Seconds &now,
                                const VolumeLimits &limits) {
    for (;; ++number) {
        if (number > kLargestNumber) {
            number = std::max(number, now());
        }
        const QString candidate = limits.fittedName(name, numberSuffix(number));
        const QString lower = candidate.toLower();
        if (!usedNames.contains(lower) && !usedStems.contains(paths::split(lower).stem)) {
            return candidate;
        }
    }
}

qint64 NameReserver::systemSeconds() {
    return QDateTime::currentSecsSinceEpoch();
}

} // namespace corvane
