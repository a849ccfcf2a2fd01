#pragma once

#include "document/Project.h"
#include "platform/FileSystem.h"
#include "platform/SerialExecutor.h"

#include <QHash>

#include <atomic>

namespace corvane {

/// The only code that reads or writes a project file for the session.
///
/// Reading is defensive: the file must be a regular file of at most 32 MiB, JSON, an object, and of
/// a schema that this build knows. Writing never replaces a fuller file on disk by a thinner
/// document in memory, unless the caller allows it.
///
/// The calls are serialised on the object's own executor: `load` and `save` are called and awaited
/// on the main thread. `loadNow` is the same reading for a thread that may wait.
class ProjectFileIO {
  public:
    /// What is known of a file on disk since it was last read or written here.
    struct DiskGuardStamp {
        quint64 inode = 0;
        FileTime modified;
        qsizetype videos = 0;
        qsizetype subclips = 0;
    };
    struct Stamp {
        quint64 inode = 0;
        FileTime modified;
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
        const QString &file() const { return m_file; }
        /// For `readFailed`: the file doesn't exist.
        bool isMissingFile() const { return m_isMissingFile; }

      private:
        LoadError(Kind kind, QString file, QString description)
            : Failure(std::move(description)), m_kind(kind), m_file(std::move(file)) {}

        Kind m_kind;
        QString m_file;
        bool m_isMissingFile = false;
    };

    class SaveError : public Failure {
      public:
        enum class Kind {
            diskGuardTripped,
            diskGuardTrippedSubclips,
            diskCorruptAbort,
            writeFailed,
        };

        static SaveError diskGuardTripped(qsizetype inMemoryVideos, qsizetype onDiskVideos);
        static SaveError diskGuardTrippedSubclips(qsizetype inMemory, qsizetype onDisk);
        static SaveError diskCorruptAbort(const QString &file, const LoadError &error);
        static SaveError writeFailed(const QString &file, const QString &error);

        Kind kind() const { return m_kind; }

      private:
        SaveError(Kind kind, QString description) : Failure(std::move(description)), m_kind(kind) {}

        Kind m_kind;
    };

    /// 32 MiB; a file of exactly this size is read.
    static constexpr qint64 kFileLimit = qint64(32) << 20;

    ProjectFileIO();

    /// Throws `LoadError`.
    QCoro::Task<Project> load(QString file);
    /// Writes the document with `filePath` set to `file`. Throws `SaveError`; the file on disk is
    /// then as it was.
    QCoro::Task<void> save(Project project, QString file, bool allowDecrease);

    /// The reading itself, on whatever thread calls it.
    static Project loadNow(const QString &file);
    /// The file's identity, links followed; nothing where it can't be read.
    static std::optional<Stamp> readStamp(const QString &file);

    /// How often the disk guard really read and decoded the file on disk. Any thread.
    int diskGuardFullReloadCountForTesting() const { return m_fullReloads; }

  private:
    void saveNow(Project project, const QString &file, bool allowDecrease);
    void guardDisk(const Project &project, const QString &file);
    std::optional<DiskGuardStamp> knownStamp(const QString &file,
                                             const std::optional<Stamp> &stamp) const;
    std::optional<DiskGuardStamp> reload(const QString &file, const std::optional<Stamp> &stamp);

    QHash<QString, DiskGuardStamp> m_diskGuardCache; ///< by path; the executor's
    std::atomic<int> m_fullReloads = 0;
    SerialExecutor m_executor; ///< last, so that it ends before what its work uses
};

/// The bytes of a project document as every writer of one makes them.
/// Throws `JSONEncodeError`.
QByteArray encodeDocument(const Project &project);

} // namespace corvane
