#pragma once

#include "transfer/Destination.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace corvane {

/// A refused output. The description is the text for the user.
class ExportEngineError : public Failure {
  public:
    /// The numbers are those of the domain "ExportEngine"; two cases share one.
    enum class Code {
        sidecarSourceIsLink = 1,
        sidecarDestinationIsLink = 2,
        outsideFolder = 3,
        destinationIsNotAFile = 3,
        sidecarSourceIsNotAFile = 4,
        destinationIsProjectMedia = 5,
    };

    ExportEngineError(Code code, QString description)
        : Failure(std::move(description)), m_code(code) {}

    Code code() const { return m_code; }

  private:
    Code m_code;
};

/// Checks where a delivery may write. Thread-safe.
namespace DestinationSafety {

/// Throws `ExportEngineError` unless `child` is strictly inside `parent`. Standardizes both without
/// file access. `label` names the child in the error.
void assertContained(const QString &child, const QString &parent, const QString &label);

/// Throws `PathSafety::Violation` if a folder between the output folder and the output is a
/// symbolic link. The output itself is checked when the finished file is placed.
void assertNoLinkedFolder(const QString &output, const QString &outputFolder, const QString &label);

/// A set of files by path and by identity: on a volume that ignores case, a file has many names.
struct FileLocations {
    QSet<QString> paths; ///< with links resolved in the folder, but not in the file name
    QSet<std::pair<quint64, quint64>> identities; ///< device and inode of existing files

    static FileLocations of(const QStringList &files);
    bool intersects(const FileLocations &other) const {
        return paths.intersects(other.paths) || identities.intersects(other.identities);
    }
};

/// Throws `ExportEngineError` if the output would replace one of the project's files.
void assertReplacesNoMedia(const Destination &output, const FileLocations &media);

} // namespace DestinationSafety

} // namespace corvane
