// The file of the registry: how it is read and written, and which projects it contains.

#include "platform/Clock.h"
#include "platform/Paths.h"
#include "trust/AuthorizationFile.h"

#include <QCoreApplication>

#include <algorithm>

namespace corvane {

namespace {

QString unreadableText(const QString &file, const QString &reason) {
    return QStringLiteral("The media authorizations in %1 can't be read: %2. Export and Handoff "
                          "refuse all media until you confirm them again. The file is kept.")
        .arg(file, reason);
}

QString setAsideText(const QString &kept, const QString &reason) {
    return QStringLiteral(
               "The media authorizations couldn't be read: %2. They were kept as %1, and "
               "a new file was begun.")
        .arg(kept, reason);
}

QString unsavedText(const QString &file, const QString &reason) {
    return QStringLiteral("The media authorizations could not be written to %1: %2. They last "
                          "until Corvane quits.")
        .arg(file, reason);
}

QString nearlyFullText(qint64 bytes) {
    return QStringLiteral("The media authorizations of all projects fill %1% of the 8 MB that can "
                          "be stored. To make room, forget projects that you no longer need: "
                          "\"corvane-cli grants\" lists them.")
        .arg(bytes * 100 / MediaSourceAuthorization::kFileLimit);
}

} // namespace

void MediaSourceAuthorization::load(const QString &dataFolder) {
    try {
        fileSystem().createFolders(dataFolder);
    } catch (const FileError &) {
        // The first change fails to be written, and is reported then.
    }
    try {
        *m_tables = AuthorizationFile::read(m_filePath);
        const auto status = fileSystem().targetStatus(m_filePath);
        reportSize(status ? status->size : 0);
    } catch (const Failure &error) {
        m_readFault = error.description();
        report(&Listeners::unreadableNotice, unreadableText(m_filePath, *m_readFault));
    }
}

/// Queues its reports to the main thread before the task ends, so that they are delivered before
/// the operation that changed the tables completes.
void MediaSourceAuthorization::persist() {
    m_isDirty = false;
    try {
        setUnreadableFileAside();
        reportSize(AuthorizationFile::write(*m_tables, m_filePath));
        report(&Listeners::unsavedNotice, std::nullopt);
    } catch (const Failure &error) {
        report(&Listeners::unsavedNotice, unsavedText(m_filePath, error.description()));
    }
}

void MediaSourceAuthorization::persistIfDirty() {
    if (m_isDirty) {
        persist();
    }
}

/// Keeps a file that could not be read, which the next write would replace.
void MediaSourceAuthorization::setUnreadableFileAside() {
    if (m_readFault) {
        const QString kept = AuthorizationFile::setAside(m_filePath, Clock::system().now());
        report(&Listeners::unreadableNotice, setAsideText(kept, *m_readFault));
        m_readFault.reset();
    }
}

void MediaSourceAuthorization::reportSize(qint64 bytes) {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [weakListeners = std::weak_ptr(m_listeners), bytes] {
            if (const auto listeners = weakListeners.lock()) {
                listeners->fileBytes = bytes;
            }
        },
        Qt::QueuedConnection);
    report(&Listeners::sizeNotice,
           bytes >= kNearlyFull ? std::optional(nearlyFullText(bytes)) : std::nullopt);
}

/// Sets or clears a notice on the main thread. A nearly full file is announced once, not after
/// every change.
void MediaSourceAuthorization::report(Notice notice, const std::optional<QString> &text) {
    const auto deliver = [weakListeners = std::weak_ptr(m_listeners), notice, text] {
        const auto listeners = weakListeners.lock();
        if (!listeners) {
            return;
        }
        const bool wasSet = std::exchange((*listeners).*notice, text).has_value();
        const bool isNew = notice != &Listeners::sizeNotice || !wasSet;
        if (text && isNew && listeners->notice) {
            listeners->notice(*text);
        }
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), deliver, Qt::QueuedConnection);
}

QStringList MediaSourceAuthorization::notices() const {
    QStringList texts;
    for (const auto &notice :
         {m_listeners->unreadableNotice, m_listeners->unsavedNotice, m_listeners->sizeNotice}) {
        if (notice) {
            texts.append(*notice);
        }
    }
    return texts;
}

void MediaSourceAuthorization::setNoticeContinuation(std::function<void(QString)> sink) {
    m_listeners->notice = std::move(sink);
}

QCoro::Task<QList<ProjectGrants>> MediaSourceAuthorization::projects() {
    co_return co_await m_executor.run([this] {
        QMap<QString, ProjectGrants> byKey;
        for (const auto &[key, table] :
             std::as_const(m_tables->authorizedPaths).asKeyValueRange()) {
            const auto isGranted = [](const auto &identity) { return identity.has_value(); };
            if (!table.isEmpty()) {
                byKey[key].grantedCount =
                    int(std::count_if(table.cbegin(), table.cend(), isGranted));
            }
        }
        for (const auto &[key, paths] :
             std::as_const(m_tables->pendingLegacyPaths).asKeyValueRange()) {
            byKey[key].pendingCount = int(paths.size());
        }
        const QStringList withFolder = m_tables->authorizedMediaRoots.keys();
        for (const QString &key : withFolder) {
            byKey[key].hasMediaFolder = true;
        }
        for (auto project = byKey.begin(); project != byKey.end(); ++project) {
            project->projectKey = project.key();
        }
        return byKey.values();
    });
}

QCoro::Task<bool> MediaSourceAuthorization::forget(QString projectFile) {
    co_return co_await m_executor.run([this, projectFile] {
        const bool isForgotten = eraseProject(projectKey(projectFile)) || eraseProject(projectFile);
        if (isForgotten) {
            persist();
        }
        return isForgotten;
    });
}

/// Returns false if the project has no entries.
bool MediaSourceAuthorization::eraseProject(const QString &key) {
    const bool hadPaths = !m_tables->authorizedPaths.take(key).isEmpty();
    const bool hadFolder = m_tables->authorizedMediaRoots.remove(key);
    const bool hadPending = m_tables->pendingLegacyPaths.remove(key);
    const bool hadMismatches = m_tables->contentMismatchPaths.remove(key);
    return hadPaths || hadFolder || hadPending || hadMismatches;
}

} // namespace corvane
