#pragma once

#include "transfer/ImportCopier.h"

namespace corvane {

class VettedCopy;

/// The private copies of a run's sources, which encoders read instead of the sources. A copy is
/// verified against the grant of its source while it is made and serves all outputs of the source.
///
/// Only the copy of the latest source is kept: the outputs of a source follow one another. Not
/// thread-safe. The destructor removes the copy; `clear` does it at a time of the caller's choice.
class VettedSources {
  public:
    VettedSources();
    ~VettedSources();
    Q_DISABLE_COPY_MOVE(VettedSources)

    /// Returns the path of the source's copy, which is hidden in the folder. The root must have an
    /// identity. Blocks while the copy is made. Throws `AVExportSession::SessionError`, also if the
    /// folder's volume has no room for the copy, and `FileError`.
    QString copyOf(const QString &source, const ImportCopier::SourceRoot &root,
                   const OpenFolder &folder, const std::stop_token &stop);
    void clear();

  private:
    std::unique_ptr<VettedCopy> m_latest;
};

} // namespace corvane
