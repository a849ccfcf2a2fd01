#include "transfer/AVExportSession.h"

#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "platform/TextFormat.h"
#include "transfer/CancelToken.h"
#include "transfer/ImportCopier.h"
#include "transfer/ProgressPoll.h"
#include "trust/PathSafety.h"

#include <QDir>

#include <cmath>

namespace corvane::AVExportSession {

namespace {

using ImportCopier::temporaryName;
using media::ExportPreset;
using media::ExportSession;
using media::ExportSessionFactory;
using media::MediaTimeRange;

/// Lets the main thread poll the progress of a session that an executor's thread owns. Thread-safe.
class SharedSession {
  public:
    void set(const std::shared_ptr<ExportSession> &session) {
        const std::scoped_lock lock(m_mutex);
        m_session = session;
    }
    std::optional<double> progress() const {
        const std::scoped_lock lock(m_mutex);
        const auto session = m_session.lock();
        return session ? std::optional(session->progress()) : std::nullopt;
    }

  private:
    mutable std::mutex m_mutex;
    std::weak_ptr<ExportSession> m_session;
};

/// A private copy of the source in the temporary folder. The destructor removes it.
class VettedCopy {
  public:
    explicit VettedCopy(const QString &source) {
        const QString extension = paths::extension(source);
        m_path =
            paths::joined(QDir::tempPath(),
                          temporaryName(QStringLiteral("cv-transcode-src."),
                                        extension.isEmpty() ? QStringLiteral("mov") : extension));
    }
    ~VettedCopy() {
        try {
            fileSystem().remove(m_path);
        } catch (const FileError &) {
            // Ignored: there is no copy yet, or it stays in the system's temporary folder.
        }
    }
    Q_DISABLE_COPY_MOVE(VettedCopy)

    const QString &path() const { return m_path; }

    /// Throws if the copy doesn't fit, before time is spent on it.
    void checkSpace(const QString &source) const;
    void create(const QString &source, const RootIdentity &identity,
                const std::stop_token &stop) const;

  private:
    QString m_path;
};

void VettedCopy::checkSpace(const QString &source) const {
    const QString folder = paths::parentFolder(m_path);
    const auto status = fileSystem().targetStatus(source);
    const qint64 needed = status ? status->size : 0;
    const qint64 available = fileSystem().availableBytes(folder);
    if (needed > available) {
        throw SessionError::exportFailed(
            QStringLiteral("a private copy of %1 needs %2 in the temporary folder %3, where %4 are "
                           "free. Make room there, then run the export again.")
                .arg(paths::lastComponent(source), formattedByteCount(quint64(needed)), folder,
                     formattedByteCount(quint64(available))));
    }
}

void VettedCopy::create(const QString &source, const RootIdentity &identity,
                        const std::stop_token &stop) const {
    using Kind = ImportCopier::CopyError::Kind;
    const QString folder = paths::parentFolder(paths::standardized(source));
    try {
        // Readable by the owner only, because the source may be.
        ImportCopier::copy(source, m_path, ImportCopier::SourceRoot{folder, identity}, {}, stop,
                           0600);
    } catch (const Cancelled &) {
        throw SessionError::cancelled();
    } catch (const ImportCopier::CopyError &error) {
        switch (error.kind()) {
        case Kind::sourceRootChanged:
            throw SessionError::sourceIdentityChanged(source);
        case Kind::sourceContentChanged:
            throw SessionError::sourceContentChanged(source);
        case Kind::destinationIsNotAFile:
            throw SessionError::destinationIsNotAFile(m_path);
        default:
            throw SessionError::exportFailed(error.description());
        }
    }
}

std::shared_ptr<ExportSession> createSession(const Transcode &transcode, const QString &asset,
                                             ExportSessionFactory &sessions) {
    try {
        if (std::shared_ptr<ExportSession> session = sessions.create(asset, transcode.preset)) {
            return session;
        }
    } catch (const media::UnsupportedSource &) {
        throw SessionError::unsupportedSourceForPreset(rawValue(transcode.preset));
    } catch (const std::exception &error) {
        throw SessionError::exportFailed(describe(error));
    }
    throw SessionError::cannotCreateSession(transcode.source);
}

std::optional<MediaTimeRange> timeRange(const Transcode &transcode) {
    if (!transcode.range) {
        return std::nullopt;
    }
    const auto [in, out] = *transcode.range;
    if (!(in < out) || !std::isfinite(in) || !std::isfinite(out)) {
        throw SessionError::timeRangeInvalid(in, out);
    }
    return MediaTimeRange::fromSeconds(in, out);
}

void runSession(ExportSession &session, ExportPreset preset, const QString &output,
                const std::optional<MediaTimeRange> &range, const std::stop_token &stop) {
    try {
        session.run(output, range, stop);
    } catch (const Cancelled &) {
        throw SessionError::cancelled();
    } catch (const std::exception &error) {
        if (stop.stop_requested()) {
            throw SessionError::cancelled();
        }
        if (dynamic_cast<const media::UnsupportedSource *>(&error)) {
            throw SessionError::unsupportedSourceForPreset(rawValue(preset));
        }
        throw SessionError::exportFailed(describe(error));
    }
}

void createFolder(const QString &folder) {
    try {
        fileSystem().createFolders(folder);
    } catch (const FileError &error) {
        throw SessionError::exportFailed(folder + QStringLiteral(": ") + error.description());
    }
}

/// Renames the output to its destination, where it may replace only a regular file.
void place(TemporaryFile &output, const QString &destination) {
    const auto existing = PathSafety::fileType(destination);
    if (existing && *existing != FileType::Regular) {
        throw SessionError::destinationIsNotAFile(destination);
    }
    try {
        output.commit(destination);
    } catch (const FileError &error) {
        throw SessionError::exportFailed(QStringLiteral("rename: ") + error.description());
    }
}

/// Performs the transcode on an executor's thread.
void transcodeNow(const Transcode &transcode, ExportSessionFactory &sessions, SharedSession &shared,
                  const std::stop_token &stop) {
    std::optional<VettedCopy> copy;
    const QString folder = paths::parentFolder(transcode.destination);
    const QString name = temporaryName(QStringLiteral(".tmp."), QStringLiteral("mp4"));
    try {
        if (transcode.expectedIdentity) {
            copy.emplace(transcode.source);
            copy->checkSpace(transcode.source);
            copy->create(transcode.source, *transcode.expectedIdentity, stop);
        }
        createFolder(folder);
        const auto session =
            createSession(transcode, copy ? copy->path() : transcode.source, sessions);
        const auto range = timeRange(transcode);
        TemporaryFile output(paths::joined(folder, name));
        shared.set(session);
        runSession(*session, transcode.preset, output.path(), range, stop);
        output.finish();
        place(output, transcode.destination);
    } catch (const FileError &error) {
        throw SessionError::exportFailed(error.description());
    }
}

} // namespace

SessionError SessionError::cannotCreateSession(const QString &source) {
    return {Kind::cannotCreateSession,
            QStringLiteral("AVAssetExportSession could not be created for ") +
                paths::lastComponent(source)};
}

SessionError SessionError::unsupportedSourceForPreset(const QString &preset) {
    return {Kind::unsupportedSourceForPreset,
            QStringLiteral("Source asset is not compatible with preset ") + preset};
}

SessionError SessionError::exportFailed(const QString &text) {
    return {Kind::exportFailed, QStringLiteral("Export failed: ") + text};
}

SessionError SessionError::timeRangeInvalid(double inSeconds, double outSeconds) {
    return {Kind::timeRangeInvalid, QStringLiteral("Time range invalid: in=%1, out=%2")
                                        .arg(shortestText(inSeconds), shortestText(outSeconds))};
}

SessionError SessionError::destinationIsNotAFile(const QString &destination) {
    return {
        Kind::destinationIsNotAFile,
        QStringLiteral("Something that isn't a file is already at %1. Rename it or pick another "
                       "export folder, then run the export again.")
            .arg(paths::lastComponent(destination))};
}

SessionError SessionError::sourceIdentityChanged(const QString &source) {
    return {
        Kind::sourceIdentityChanged,
        QStringLiteral("The folder %1 changed after it was authorized and no longer matches what "
                       "was granted, refusing to read from it: %2. Re-import or relink it, then "
                       "try again.")
            .arg(paths::lastComponent(source), source)};
}

SessionError SessionError::sourceContentChanged(const QString &source) {
    return {
        Kind::sourceContentChanged,
        QStringLiteral("%1's contents changed since it was authorized, refusing to transcode what "
                       "was just read: %2. Re-import or relink it, then try again.")
            .arg(paths::lastComponent(source), source)};
}

SessionError SessionError::cancelled() {
    return {Kind::cancelled, kCancelledText};
}

QCoro::Task<> transcodeVetted(Transcode transcode, media::ExportSessionFactory &sessions,
                              std::function<void(double)> progress, std::stop_token stop,
                              Clock &clock) {
    if (!sessions.canCreateSessions()) {
        throw SessionError::cannotCreateSession(transcode.source);
    }
    SharedSession shared;
    const ProgressPoll poll(clock, kProgressInterval, [&] {
        if (const auto value = shared.progress()) {
            progress(*value);
        }
    });
    co_await userInitiatedExecutor().run([&] { transcodeNow(transcode, sessions, shared, stop); });
}

} // namespace corvane::AVExportSession
