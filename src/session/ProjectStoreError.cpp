#include "session/ProjectStoreError.h"

namespace corvane {

namespace {

QString errorPrefix(ProjectStoreError::Kind kind) {
    switch (kind) {
    case ProjectStoreError::Kind::openFailed:
        return QStringLiteral("Open failed: ");
    case ProjectStoreError::Kind::saveFailed:
    case ProjectStoreError::Kind::changedOnDisk:
        return QStringLiteral("Save failed: ");
    case ProjectStoreError::Kind::createFailed:
        return QStringLiteral("Create failed: ");
    case ProjectStoreError::Kind::copyFailed:
        return QStringLiteral("Copy failed: ");
    case ProjectStoreError::Kind::backupFailed:
        break;
    }
    return QStringLiteral("Backup failed: ");
}

} // namespace

ProjectStoreError::ProjectStoreError(Kind kind, const QString &error)
    : Failure(errorPrefix(kind) + error), m_kind(kind) {}

} // namespace corvane
