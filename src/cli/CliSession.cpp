#include "cli/CliSession.h"

#include "platform/Tasks.h"

namespace corvane {

CliSession::CliSession(const Console &console)
    : m_lock(console.dataFolder()),
      m_registry(console.dataFolder()),
      m_authorization(console.dataFolder()),
      m_store(m_io, m_registry, m_backups, m_authorization) {}

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
    QStringList ids;
    for (const QString &text : texts) {
        const QString id = resolveClip(text);
        if (!ids.contains(id)) {
            ids.append(id);
        }
    }
    return ids;
}

void CliSession::throwLastError() const {
    if (const auto &error = m_store.lastError()) {
        throw Failure(error->description());
    }
}

QString CliSession::resolveClip(const QString &text) const {
    QStringList namesakes;
    for (const VideoItem &video : project().videos) {
        if (video->id == text) {
            return text;
        }
        if (video->fileName == text) {
            namesakes.append(video->id);
        }
    }
    if (namesakes.isEmpty()) {
        throw Failure(QStringLiteral("No clip has the id or the file name \"%1\".").arg(text));
    }
    if (namesakes.size() > 1) {
        throw Failure(
            QStringLiteral("%1 clips have the file name \"%2\". Use the id of the one you "
                           "mean: %3.")
                .arg(namesakes.size())
                .arg(text, namesakes.join(QStringLiteral(", "))));
    }
    return namesakes.first();
}

} // namespace corvane
