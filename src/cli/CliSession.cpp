#include "cli/CliSession.h"

#include "platform/Tasks.h"
#include "session/SessionTexts.h"

namespace corvane {

namespace {

/// The id of the clip with this file name. Throws if `ids` is empty or ambiguous.
QString uniqueId(const QString &name, const QStringList &ids) {
    if (ids.isEmpty()) {
        throw Failure(QStringLiteral("No clip has the id or the file name \"%1\".").arg(name));
    }
    if (ids.size() > 1) {
        throw Failure(
            QStringLiteral("%1 clips have the file name \"%2\". Use the id of the one you "
                           "mean: %3.")
                .arg(ids.size())
                .arg(name, ids.join(QStringLiteral(", "))));
    }
    return ids.first();
}

} // namespace

CliSession::CliSession(Console &console, ContentHashMigration hashes)
    : m_console(console),
      m_lock(console.dataFolder()),
      m_registry(console.dataFolder()),
      m_authorization(console.dataFolder(), console.userDefaults()),
      m_store(m_io, m_registry, m_backups, m_authorization, Clock::system(),
              [this, hashes](const QList<ProjectSummary> &summaries) {
                  return migrateAuthorizations(m_authorization, m_io, summaries, hashes);
              }) {
    waitUntilDone(m_store.waitForStartUp());
}

CliSession::CliSession(const CommandCall &call, ContentHashMigration hashes)
    : CliSession(call.console(), hashes) {
    const QString file = call.path(0);
    waitUntilDone(m_store.openProject(file));
    throwLastError();
    if (const auto holder = DocumentLock::otherHolder(file, {}, m_store.clock().now())) {
        warn(SessionTexts::openOnSince(*holder));
    }
    warnIfNearlyFull();
}

void CliSession::create(const NewProject &fields, const QString &file) {
    waitUntilDone(m_store.createProject(fields, file));
    throwLastError();
}

void CliSession::save() {
    throwLastError();
    waitUntilDone(m_store.flushPendingSave());
    throwLastError();
    warnIfNearlyFull();
}

bool CliSession::printNotices(const CommandCall &call) const {
    const QStringList notices = m_authorization.notices();
    for (const QString &notice : notices) {
        call.printNotice(notice);
    }
    return !m_authorization.unsavedNotice();
}

QStringList CliSession::resolveClips(const QStringList &texts) const {
    QHash<QString, QStringList> idsByName;
    QSet<QString> known;
    for (const VideoItem &video : project().videos) {
        idsByName[video->fileName].append(video->id);
        known.insert(video->id);
    }
    QStringList ids;
    for (const QString &text : texts) {
        ids.append(known.contains(text) ? text : uniqueId(text, idsByName.value(text)));
    }
    ids.removeDuplicates();
    return ids;
}

void CliSession::warn(const QString &sentence) {
    m_console.writeError(printable(sentence).toUtf8() + '\n');
}

/// Once for each command.
void CliSession::warnIfNearlyFull() {
    const QString sentence = SessionTexts::nearlyFull(m_store.saveState());
    if (!sentence.isEmpty() && !std::exchange(m_hasWarnedOfSize, true)) {
        warn(sentence);
    }
}

void CliSession::throwLastError() const {
    if (const auto &error = m_store.lastError()) {
        throw Failure(error->description());
    }
}

} // namespace corvane
