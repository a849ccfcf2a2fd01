#pragma once

#include "platform/Failure.h"

#include <QSet>
#include <QString>
#include <QStringList>

namespace corvane {

/// A refusal of the export engine's own.
class ExportEngineError : public Failure {
  public:
    /// The numbers are those of the domain "ExportEngine"; two refusals share one.
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

/// Where a delivery may write. Any thread.
namespace DestinationSafety {

/// Throws `ExportEngineError` unless `child` lies strictly inside `parent`, both standardized
/// first. `label` is the word for the child's role. Looks at no file.
void assertContained(const QString &child, const QString &parent, const QString &label);

/// Throws `PathSafety::Violation` where a folder between the output folder and the output is a
/// symbolic link. The output's own name is looked at when the finished file is placed.
void assertNoLinkedFolder(const QString &output, const QString &outputFolder, const QString &label);

/// Where files lie, by path and by identity.
struct Places {
    QSet<QString> paths; ///< links on the way resolved, the file's own name as it is
    /// Device and inode of those that exist: on a volume that ignores case, one file has many
    /// names.
    QSet<std::pair<quint64, quint64>> identities;

    bool intersects(const Places &other) const {
        return paths.intersects(other.paths) || identities.intersects(other.identities);
    }
};
Places placesOf(const QStringList &files);

/// Throws `ExportEngineError` where the output would replace one of the files that the project
/// delivers from.
void assertReplacesNoMedia(const QString &output, const Places &media);

} // namespace DestinationSafety

} // namespace corvane
