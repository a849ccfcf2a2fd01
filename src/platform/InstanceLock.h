#pragma once

#include "platform/FileSystem.h"

namespace corvane {

/// Thrown if another process holds the lock. The description names the process.
class AlreadyRunning : public Failure {
  public:
    using Failure::Failure;
};

/// An exclusive lock on the application's data folder, held during the object's lifetime, so that
/// only one process ever writes the registry of grants. It is a kernel lock on the file "lock",
/// which is never removed; the kernel releases it when the process ends, even after a crash.
class InstanceLock {
  public:
    /// Creates the folder if it is missing. Doesn't wait: throws `AlreadyRunning` if another
    /// process holds the lock, and `Failure` if the file can't be created or locked.
    explicit InstanceLock(const QString &dataFolder);

  private:
    Descriptor m_lock;
};

} // namespace corvane
