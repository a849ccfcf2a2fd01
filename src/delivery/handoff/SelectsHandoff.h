#pragma once

#include "platform/OpenFolder.h"

#include <functional>

/// Reserves the folder of a package.
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

/// Throws `escapesDestination` unless `child` is strictly inside `parent`. Standardizes both
/// without file access.
void assertContained(const QString &child, const QString &parent);

/// Unix time in whole seconds.
using Seconds = std::function<qint64()>;

/// Creates and opens a new folder in the destination, with the name or the first free numbered
/// name. Concurrent calls get different folders. On an executor's thread. Throws `ContainmentError`
/// and `FileError`.
OpenFolder reserveUniqueSubfolder(const QString &name, const OpenFolder &destination,
                                  const Seconds &now);

} // namespace corvane::SelectsHandoff
