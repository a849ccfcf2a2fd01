#include "transfer/AVExportSession.h"

#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "platform/SerialExecutor.h"
#include "platform/TextFormat.h"
#include "transfer/CancelToken.h"
#include "transfer/ProgressPoll.h"
#include "transfer/VettedSources.h"

#include <cmath>

namespace corvane::AVExportSession {

namespace {

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

/// Renames the output to its destination.
void place(TemporaryFile &output, const Destination &destination) {
    const auto existing =
        fileSystem().linkStatusAt(destination.folder.descriptor(), destination.name);
    if (existing && existing->type != FileType::Regular) {
        throw SessionError::destinationIsNotAFile(destination.path());
    }
    try {
        output.commit(destination.name, destination.placing);
    } catch (const FileError &error) {
        throw SessionError::exportFailed(QStringLiteral("rename: ") + error.description());
    }
}

/// The path of an open file in this process, whatever its name is now.
QString pathOf(const Descriptor &file) {
    return QStringLiteral("/proc/self/fd/%1").arg(file.number());
}

/// Performs the transcode on an executor's thread.
void transcodeNow(const Transcode &transcode, ExportSessionFactory &sessions, SharedSession &shared,
                  const std::stop_token &stop) {
    const Destination &destination = transcode.destination;
    VettedSources ownSources;
    VettedSources &sources = transcode.vettedSources ? *transcode.vettedSources : ownSources;
    try {
        const QString asset =
            transcode.sourceRoot.identity
                ? sources.copyOf(transcode.source, transcode.sourceRoot, destination.folder, stop)
                : transcode.source;
        const auto session = createSession(transcode, asset, sessions);
        const auto range = timeRange(transcode);
        TemporaryFile output(
            destination.folder,
            ImportCopier::temporaryName(QStringLiteral(".tmp."), QStringLiteral("mp4")));
        shared.set(session);
        runSession(*session, transcode.preset, pathOf(output.descriptor()), range, stop);
        output.finish();
        place(output, destination);
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
