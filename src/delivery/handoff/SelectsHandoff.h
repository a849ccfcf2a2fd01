#pragma once

#include "platform/Failure.h"

#include <functional>

/// The folder of a package.
namespace corvane::SelectsHandoff {

class ContainmentError : public Failure {
  public:
    enum class Kind { escapesDestination, couldNotReserveFolder };

    static ContainmentError escapesDestination(const QString &child, const QString &parent);
    static ContainmentError couldNotReserveFolder(const QString &name);

    Kind kind() const { return m_kind; }

  private:
    ContainmentError(Kind kind, QString description)
        : Failure(std::move(description)), m_kind(kind) {}

    Kind m_kind;
};

/// Throws `escapesDestination` unless `child` lies strictly inside `parent`, both standardized
/// first. Looks at no file.
void assertContained(const QString &child, const QString &parent);

/// Unix time in whole seconds.
using Seconds = std::function<qint64()>;

/// Creates a folder in the destination that nothing was at before, under the name or the first
/// numbered one that is free, and gives its path. Nobody else gets the same folder. The destination
/// must exist. On an executor's thread; throws `ContainmentError` and `FileError`.
QString reserveUniqueSubfolder(const QString &name, const QString &destination, const Seconds &now);

} // namespace corvane::SelectsHandoff
