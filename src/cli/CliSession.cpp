#include "cli/CliSession.h"

#include "platform/Tasks.h"

namespace corvane {

namespace {

/// The only clip with this file name. Throws if there is none or more than one.
QString onlyOne(const QString &name, const QStringList &namesakes) {
    if (namesakes.isEmpty()) {
        throw Failure(QStringLiteral("No clip has the id or the file name \"%1\".").arg(name));
    }
    if (namesakes.size() > 1) {
        throw Failure(
            QStringLiteral("%1 clips have the file name \"%2\". Use the id of the one you "
                           "mean: %3.")
                .arg(namesakes.size())
                .arg(name, namesakes.join(QStringLiteral(", "))));
    }
    return namesakes.first();
}

} // namespace

CliSession::CliSession(const Console &console, ContentHashMigration hashes)
    : m_lock(console.dataFolder()),
      m_registry(console.dataFolder()),
      m_authorization(console.dataFolder(), console.userDefaults()),
      m_store(m_io, m_registry, m_backups, m_authorization, Clock::system(),
              [this, hashes](const QList<ProjectSummary> &summaries) {
                  return migrateAuthorizations(m_authorization, m_io, summaries, hashes);
              }) {
    waitUntilDone(m_store.waitForStartUp());
}

void CliSession::create(const NewProject &fields, const QString &file) {
    waitUntilDone(m_store.createProject(fields, file));
    throwLastError();
}

void CliSession::open(const QString &file) {
    waitUntilDone(m_store.openProject(file));
    throwLastError();
}

void CliSession::save() {
    throwLastError();
    waitUntilDone(m_store.flushPendingSave());
    throwLastError();
}

QStringList CliSession::resolveClips(const QStringList &texts) const {
    QHash<QString, QStringList> namesakes;
    QSet<QString> known;
    for (const VideoItem &video : project().videos) {
        namesakes[video->fileName].append(video->id);
        known.insert(video->id);
    }
    QStringList ids;
    QSet<QString> taken;
    for (const QString &text : texts) {
        const QString id = known.contains(text) ? text : onlyOne(text, namesakes.value(text));
        if (!taken.contains(id)) {
            taken.insert(id);
            ids.append(id);
        }
    }
    return ids;
}

QString CliSession::resolveClip(const QString &text) const {
    return resolveClips({text}).first();
}

void CliSession::throwLastError() const {
    if (const auto &error = m_store.lastError()) {
        throw Failure(error->description());
    }
}

} // namespace corvane
