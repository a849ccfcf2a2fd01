#pragma once

#include "platform/FileSystem.h"

namespace corvane {

/// The file of an open document as this process last read or wrote it, to notice changes by others.
/// The saves of the document share one object. `ProjectFileIO` reads and changes it on its
/// executor; other code only passes it on.
///
/// A default-constructed baseline is unknown and accepts any file.
class FileBaseline {
  public:
    enum class Match {
        Same,
        Changed,
        Uncertain, ///< another inode, size or time: the contents decide
    };

    bool isKnown() const { return !m_digest.isEmpty(); }
    /// The file system that contained the file.
    quint64 device() const { return m_status.device; }

    /// The file was read.
    void setRead(const FileStatus &status, const QByteArray &contents);
    /// The file is about to be replaced by one with these contents. Until `setWritten`, both match:
    /// a write can fail after the file was replaced.
    void setWriting(const QByteArray &contents);
    void setWritten(const FileStatus &status);
    Match match(const FileStatus &status) const;
    /// Decides by the contents of the file with this status, which must be `Uncertain`. Remembers
    /// the answer for the status, so that the next call of `match` need not read the file again.
    Match match(const FileStatus &status, const QByteArray &contents);

  private:
    FileStatus m_status;
    QByteArray m_digest;                   ///< SHA-256 of the contents; empty if unknown
    QByteArray m_writingDigest;            ///< of the contents being written; may be empty
    std::optional<FileStatus> m_different; ///< a file that has other contents
};

} // namespace corvane
