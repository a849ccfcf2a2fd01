#include "delivery/handoff/RecentDestinations.h"

namespace corvane {

const QString &RecentDestinations::key() {
    static const QString name = QStringLiteral("Corvane.SelectsHandoff.RecentDestinations");
    return name;
}

RecentDestinations::RecentDestinations(std::unique_ptr<QSettings> defaults)
    : m_defaults(std::move(defaults)) {}

QStringList RecentDestinations::load() const {
    QStringList folders = m_defaults->value(key()).toStringList();
    folders.removeIf([](const QString &folder) { return !folder.startsWith(QLatin1Char('/')); });
    folders.removeDuplicates();
    return folders.first(std::min(folders.size(), kMaxCount));
}

QStringList RecentDestinations::note(const QString &folder) {
    QStringList folders = load();
    folders.removeAll(folder);
    folders.prepend(folder);
    folders = folders.first(std::min(folders.size(), kMaxCount));
    m_defaults->setValue(key(), folders);
    return folders;
}

} // namespace corvane
