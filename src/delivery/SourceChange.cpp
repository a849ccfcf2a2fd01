#include "delivery/SourceChange.h"

#include "platform/FileSystem.h"
#include "transfer/AVExportSession.h"
#include "transfer/ImportCopier.h"
#include "trust/PathSafety.h"

namespace corvane {

bool isSourceChange(const std::exception &error) {
    using CopyError = ImportCopier::CopyError;
    using SessionError = AVExportSession::SessionError;
    using Violation = PathSafety::Violation;
    if (const auto *violation = dynamic_cast<const Violation *>(&error)) {
        return violation->kind() == Violation::Kind::sourceIdentityChanged;
    }
    if (const auto *copy = dynamic_cast<const CopyError *>(&error)) {
        return copy->kind() == CopyError::Kind::sourceContentChanged ||
               copy->kind() == CopyError::Kind::sourceRootChanged;
    }
    const auto *session = dynamic_cast<const SessionError *>(&error);
    return session && (session->kind() == SessionError::Kind::sourceContentChanged ||
                       session->kind() == SessionError::Kind::sourceIdentityChanged);
}

QStringList existingSources(const QStringList &files) {
    QStringList existing = files;
    existing.removeIf([](const QString &file) { return !fileSystem().linkStatus(file); });
    return existing;
}

} // namespace corvane
