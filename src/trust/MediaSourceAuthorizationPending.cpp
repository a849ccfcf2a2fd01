// What of the registry waits for the user's word.

#include "trust/AuthorizationFile.h"

namespace corvane {

QCoro::Task<QSet<QString>> MediaSourceAuthorization::pendingLegacyPaths(QString projectFile) {
    co_return co_await m_executor.run([this, projectFile] {
        return m_tables->pendingLegacyPaths.value(projectKey(projectFile));
    });
}

QCoro::Task<QSet<QString>> MediaSourceAuthorization::contentMismatchPaths(QString projectFile) {
    co_return co_await m_executor.run([this, projectFile] {
        return m_tables->contentMismatchPaths.value(projectKey(projectFile));
    });
}

QCoro::Task<QSet<QString>> MediaSourceAuthorization::unresolvedPaths(QString projectFile) {
    co_return co_await m_executor.run(
        [this, projectFile] { return listUnresolved(projectKey(projectFile)); });
}

QCoro::Task<PendingMedia> MediaSourceAuthorization::pendingMedia(QString projectFile) {
    co_return co_await m_executor.run([this, projectFile] {
        const QString key = projectKey(projectFile);
        QSet<QString> unresolved = listUnresolved(key); // before the set that it adds to is read
        return PendingMedia{.unresolved = std::move(unresolved),
                            .pendingLegacy = m_tables->pendingLegacyPaths.value(key),
                            .contentMismatch = m_tables->contentMismatchPaths.value(key)};
    });
}

/// The paths without identity, which are pending from now on.
QSet<QString> MediaSourceAuthorization::listUnresolved(const QString &key) {
    QSet<QString> unresolved;
    const AuthorizedPaths table = m_tables->authorizedPaths.value(key);
    for (const auto &[path, identity] : table.asKeyValueRange()) {
        if (!identity) {
            unresolved.insert(path);
        }
    }
    if (!m_tables->pendingLegacyPaths.value(key).contains(unresolved)) {
        addPending(key, unresolved);
        persist();
    }
    return unresolved;
}

/// What is confirmed leaves the pending set only once it is granted, so that a process that ends
/// while it reads long files has forgotten nothing.
QCoro::Task<void> MediaSourceAuthorization::confirmPendingPaths(QStringList paths,
                                                                QString projectFile) {
    const QStringList confirmed = co_await m_executor.run(
        [this, paths, projectFile] { return pendingAmong(projectKey(projectFile), paths); });
    if (confirmed.isEmpty()) {
        co_return;
    }
    co_await authorize(confirmed, projectFile);
    co_await m_executor.run([this, confirmed, projectFile] {
        settleConfirmed(projectKey(projectFile), confirmed);
        persist();
    });
}

QStringList MediaSourceAuthorization::pendingAmong(const QString &key,
                                                   const QStringList &paths) const {
    const QSet<QString> pending = m_tables->pendingLegacyPaths.value(key);
    QStringList among;
    for (const QString &path : paths) {
        if (pending.contains(path)) {
            among.append(path);
        }
    }
    return among;
}

/// Ends the waiting of what a confirmation granted, and of nothing else. A file whose contents were
/// told to have changed is granted by the hash of its new contents or not at all.
void MediaSourceAuthorization::settleConfirmed(const QString &key, const QStringList &paths) {
    AuthorizedPaths &table = m_tables->authorizedPaths[key];
    const QSet<QString> mismatched = m_tables->contentMismatchPaths.value(key);
    QSet<QString> granted;
    QSet<QString> unconfirmed;
    for (const QString &path : paths) {
        const std::optional<RootIdentity> entry = table.value(path);
        const bool isProved = entry && (entry->contentHash || !mismatched.contains(path));
        if (entry && !isProved) {
            table.insert(path, std::nullopt);
        }
        (isProved ? granted : unconfirmed).insert(path);
    }
    removePending(key, granted);
    addPending(key, unconfirmed);
}

QCoro::Task<void> MediaSourceAuthorization::markPending(QStringList neverGranted,
                                                        QStringList changed, QString projectFile) {
    if (neverGranted.isEmpty() && changed.isEmpty()) {
        co_return;
    }
    co_await m_executor.run([this, neverGranted, changed, projectFile] {
        const QString key = projectKey(projectFile);
        const QSet<QString> mismatched(changed.cbegin(), changed.cend());
        const QSet<QString> pending =
            mismatched | QSet<QString>(neverGranted.cbegin(), neverGranted.cend());
        const QSet<QString> asked = m_tables->pendingLegacyPaths.value(key);
        if (asked.contains(pending) &&
            m_tables->contentMismatchPaths.value(key).contains(mismatched)) {
            return;
        }
        AuthorizedPaths &table = m_tables->authorizedPaths[key];
        for (const QString &path : neverGranted) {
            if (!table.contains(path) && !asked.contains(path)) { // else it is asked as what it is
                table.insert(path, std::nullopt);
            }
        }
        addPending(key, pending);
        if (!mismatched.isEmpty()) {
            m_tables->contentMismatchPaths[key].unite(mismatched);
        }
        persist();
    });
}

void MediaSourceAuthorization::addPending(const QString &key, const QSet<QString> &paths) {
    if (!paths.isEmpty()) {
        m_tables->pendingLegacyPaths[key].unite(paths);
    }
}

/// A project that waits for nothing has no set.
void MediaSourceAuthorization::removePending(const QString &key, const QSet<QString> &paths) {
    const auto pending = m_tables->pendingLegacyPaths.find(key);
    if (pending == m_tables->pendingLegacyPaths.end()) {
        return;
    }
    pending->subtract(paths);
    if (pending->isEmpty()) {
        m_tables->pendingLegacyPaths.erase(pending);
    }
}

} // namespace corvane
