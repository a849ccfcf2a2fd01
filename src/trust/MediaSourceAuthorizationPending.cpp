// The paths of the registry that need the user's confirmation.

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
        QSet<QString> unresolved = listUnresolved(key); // first: it adds to the pending paths
        return PendingMedia{.unresolved = std::move(unresolved),
                            .pendingLegacy = m_tables->pendingLegacyPaths.value(key),
                            .contentMismatch = m_tables->contentMismatchPaths.value(key)};
    });
}

/// Returns the paths without an identity and makes them pending.
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

/// Paths stay pending until they are granted, so that no question is lost if the process ends while
/// hashing.
QCoro::Task<QSet<QString>> MediaSourceAuthorization::confirmPendingPaths(QStringList paths,
                                                                         QString projectFile,
                                                                         HashingControl control) {
    const QStringList confirmed = co_await m_executor.run(
        [this, paths, projectFile] { return pendingAmong(projectKey(projectFile), paths); });
    if (confirmed.isEmpty()) {
        co_return {};
    }
    const QSet<QString> hashed = co_await authorize(confirmed, projectFile, {}, std::move(control));
    co_return co_await m_executor.run([this, confirmed, hashed, projectFile] {
        return finishConfirmation(projectKey(projectFile), confirmed, hashed);
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

/// Removes the paths that were hashed from the pending ones and returns them. The others stay
/// pending, and a file that was reported as changed keeps no grant without an anchor.
QSet<QString> MediaSourceAuthorization::finishConfirmation(const QString &key,
                                                           const QStringList &paths,
                                                           const QSet<QString> &hashed) {
    AuthorizedPaths &table = m_tables->authorizedPaths[key];
    const QSet<QString> mismatched = m_tables->contentMismatchPaths.value(key);
    QSet<QString> granted;
    for (const QString &path : paths) {
        const std::optional<RootIdentity> entry = table.value(path);
        if (hashed.contains(paths::standardized(path))) {
            granted.insert(path);
        } else if (entry && !entry->contentHash && mismatched.contains(path)) {
            table.insert(path, std::nullopt);
        }
    }
    removePending(key, granted);
    persist();
    return granted;
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
        const QSet<QString> pendingBefore = m_tables->pendingLegacyPaths.value(key);
        if (pendingBefore.contains(pending) &&
            m_tables->contentMismatchPaths.value(key).contains(mismatched)) {
            return;
        }
        AuthorizedPaths &table = m_tables->authorizedPaths[key];
        for (const QString &path : neverGranted) {
            if (!table.contains(path) &&
                !pendingBefore.contains(path)) { // keep what is already listed or pending
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

/// Removes the set of a project without pending paths.
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
