#pragma once

#include "platform/Failure.h"

namespace corvane {

/// A failed operation of the session. Its description names the operation and the underlying error.
class ProjectStoreError : public Failure {
  public:
    enum class Kind {
        openFailed,
        saveFailed,
        changedOnDisk, ///< a save found the file changed by another program
        createFailed,
        copyFailed,
        backupFailed,
    };

    /// `error` is the description of the underlying error.
    ProjectStoreError(Kind kind, const QString &error);

    Kind kind() const { return m_kind; }
    bool isSaveFailure() const {
        return m_kind == Kind::saveFailed || m_kind == Kind::changedOnDisk;
    }

    bool operator==(const ProjectStoreError &other) const {
        return m_kind == other.m_kind && description() == other.description();
    }

  private:
    Kind m_kind;
};

} // namespace corvane
