#pragma once

#include "platform/Failure.h"

namespace corvane {

/// A failed operation of the session. Its description names the operation and the underlying error.
class ProjectStoreError : public Failure {
  public:
    enum class Kind { openFailed, saveFailed, createFailed, backupFailed };

    /// `error` is the description of the underlying error.
    ProjectStoreError(Kind kind, const QString &error);

    Kind kind() const { return m_kind; }

    bool operator==(const ProjectStoreError &other) const {
        return m_kind == other.m_kind && description() == other.description();
    }

  private:
    Kind m_kind;
};

} // namespace corvane
