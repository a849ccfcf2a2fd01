#include "platform/OpenFolder.h"

#include "platform/Paths.h"

#include <cerrno>

namespace corvane {

OpenFolder::OpenFolder(Descriptor descriptor)
    : m_descriptor(std::make_shared<const Descriptor>(std::move(descriptor))) {}

OpenFolder OpenFolder::at(const QString &path) {
    return OpenFolder(fileSystem().openFolder(path));
}

OpenFolder OpenFolder::subfolder(const QString &name) const {
    if (!fileSystem().linkStatusAt(descriptor(), name)) {
        try {
            fileSystem().createFolderAt(descriptor(), name);
        } catch (const FileError &error) {
            if (error.code() != EEXIST) { // created by another process
                throw;
            }
        }
    }
    return OpenFolder(fileSystem().openFolderAt(descriptor(), name));
}

bool OpenFolder::isAtItsPath() const {
    const auto found = fileSystem().targetStatus(path());
    const FileStatus own = fileSystem().status(descriptor());
    return found && found->device == own.device && found->inode == own.inode;
}

QString OpenFolder::anchoredPath() const {
    // The dot makes it the folder itself instead of a link to it.
    return QStringLiteral("/proc/self/fd/%1/.").arg(descriptor().number());
}

QString OpenFolder::anchoredPath(const QString &name) const {
    return QStringLiteral("/proc/self/fd/%1/%2").arg(QString::number(descriptor().number()), name);
}

} // namespace corvane
