#pragma once

#include "document/FileBaseline.h"
#include "document/Project.h"
#include "platform/FileSystem.h"
#include "platform/SerialExecutor.h"

#include <QHash>

#include <atomic>

namespace corvane {

/// Reads and writes project files.
///
/// Reading is defensive: the file must be a regular file of at most 32 MiB that contains a JSON
/// object of a known schema version.
///
/// Writing is guarded: a save doesn't replace a file that has more clips or more subclips than the
/// document, unless the caller allows it. The guard reads the file at the first save; later it
/// remembers what it has read or saved, and reads the file again only if another program has
/// changed it. A save with a known baseline never replaces a file that another program has changed,
/// whatever it contains.
///
/// Operations are serialized on the object's own executor. `load` and `save` are called and awaited
/// on the main thread.
class ProjectFileIO {
  public:
    /// A version of a file on disk.
    struct Stamp {
        quint64 inode = 0;
        FileTime modified;

        bool isSameVersion(const Stamp &other) const {
            return inode == other.inode && modified == other.modified;
        }
    };
    /// A version of a file on disk and what it contains.
    struct DiskGuardStamp : Stamp {
        qsizetype videos = 0;
        qsizetype subclips = 0;
    };

    class LoadError : public Failure {
      public:
        enum class Kind {
            readFailed,
            invalidJSON,
            decodeFailed,
            unknownFutureSchema,
            notAProjectFile,
            fileTooLarge,
        };

        static LoadError readFailed(const QString &file, const FileError &error);
        static LoadError invalidJSON(const QString &file);
        static LoadError decodeFailed(const QString &file, const QString &error);
        static LoadError unknownFutureSchema(const QString &file, qint64 version);
        static LoadError notAProjectFile(const QString &file);
        static LoadError fileTooLarge(const QString &file, qint64 bytes, qint64 limit);

        Kind kind() const { return m_kind; }
        /// True for `readFailed` if the file doesn't exist.
        bool isMissingFile() const { return m_isMissingFile; }

      private:
        LoadError(Kind kind, QString description) : Failure(std::move(description)), m_kind(kind) {}

        Kind m_kind;
        bool m_isMissingFile = false;
    };

    class SaveError : public Failure {
      public:
        enum class Kind {
            diskGuardTripped,
            diskGuardTrippedSubclips,
            diskCorruptAbort,
            writeFailed,
            changedOnDisk,
        };

        static SaveError diskGuardTripped(qsizetype inMemoryVideos, qsizetype onDiskVideos);
        static SaveError diskGuardTrippedSubclips(qsizetype inMemory, qsizetype onDisk);
        static SaveError diskCorruptAbort(const QString &file, const LoadError &error);
        static SaveError writeFailed(const QString &file, const QString &error);
        static SaveError changedOnDisk(const QString &file);

        Kind kind() const { return m_kind; }

      private:
        SaveError(Kind kind, QString description) : Failure(std::move(description)), m_kind(kind) {}

        Kind m_kind;
    };

    /// 32 MiB, inclusive.
    static constexpr qint64 kFileLimit = qint64(32) << 20;

    /// A document to be edited and saved.
    struct OpenedProject {
        Project project;
        std::shared_ptr<FileBaseline> baseline; ///< never null
        qint64 size = 0;                        ///< of the file, in bytes
    };

    ProjectFileIO();

    /// Throws `LoadError`.
    QCoro::Task<Project> load(QString file);
    /// Likewise, for a document that will be saved.
    QCoro::Task<OpenedProject> open(QString file);
    /// Writes the document with its `filePath` set to `file`, updates the baseline if there is one,
    /// and returns the size of the file in bytes. Throws `SaveError` and leaves the file on disk
    /// unchanged, except as `writeAtomically` describes.
    QCoro::Task<qint64> save(Project project, QString file, bool allowDecrease,
                             std::shared_ptr<FileBaseline> baseline = {});

    /// Reads a project file on the calling thread. Thread-safe. Throws `LoadError`.
    static Project loadNow(const QString &file);
    /// The current version of a file, links followed; nullopt if its status can't be read.
    static std::optional<Stamp> readStamp(const QString &file);

    /// How often the disk guard had to read a file. Thread-safe.
    int diskGuardFullReloadCountForTesting() const { return m_fullReloads; }

  private:
    qint64 saveNow(Project project, const QString &file, bool allowDecrease,
                   FileBaseline *baseline);
    void guardDisk(const Project &project, const QString &file);
    std::optional<DiskGuardStamp> contentsOnDisk(const QString &file);

    QHash<QString, DiskGuardStamp> m_diskGuardCache; ///< by path; used on the executor only
    std::atomic<int> m_fullReloads = 0;
    SerialExecutor m_executor; ///< last member, so that its thread stops first
};

} // namespace corvane
