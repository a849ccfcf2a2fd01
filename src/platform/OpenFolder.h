#pragma once

#include "platform/FileSystem.h"

namespace corvane {

/// A folder that is held open, so that what is created in it by name gets into this folder, even if
/// the folder is renamed, unmounted or replaced by another one meanwhile. Copies share the
/// descriptor, which is closed with the last of them. Thread-safe.
class OpenFolder {
  public:
    /// Opens a folder; follows links. Throws `FileError`.
    static OpenFolder at(const QString &path);
    /// Opens a subfolder and creates it first if it is missing. Throws `FileError`, with `ELOOP` or
    /// `ENOTDIR` for a symbolic link and `ENOTDIR` for a file.
    OpenFolder subfolder(const QString &name) const;

    const Descriptor &descriptor() const noexcept { return *m_descriptor; }
    /// The path by which the folder was opened.
    const QString &path() const noexcept { return m_descriptor->path(); }
    /// Whether that path still leads to this folder.
    bool isAtItsPath() const;

    // Paths by the descriptor instead of the folder's names, for functions that take paths. Valid
    // in this process while the folder is open.
    QString anchoredPath() const;
    QString anchoredPath(const QString &name) const;

  private:
    explicit OpenFolder(Descriptor descriptor);

    std::shared_ptr<const Descriptor> m_descriptor;
};

} // namespace corvane
