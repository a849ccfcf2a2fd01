#pragma once

#include "platform/FileSystem.h"

namespace corvane {

/// Another process owns the application's data folder. The description says which.
class AlreadyRunning : public Failure {
  public:
    using Failure::Failure;
};

/// The right to write the application's data folder, held by one process at a time for as long as
/// the object lives: two writers never meet at the registry of grants. The lock is the kernel's, on
/// a file named "lock" that stays; it ends with its process, however that ends.
class InstanceLock {
  public:
    /// Creates the folder if it is missing. Throws `AlreadyRunning`, or `Failure` where no lock
    /// file can be made.
    explicit InstanceLock(const QString &dataFolder);

  private:
    Descriptor m_lock;
};

} // namespace corvane
