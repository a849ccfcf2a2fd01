#include "delivery/handoff/HandoffStep.h"

#include "delivery/ExportRow.h"
#include "delivery/handoff/SelectsHandoff.h"
#include "platform/Paths.h"
#include "transfer/AVExportSession.h"
#include "transfer/DestinationSafety.h"
#include "transfer/ImportCopier.h"
#include "transfer/ProgressPoll.h"

#include <atomic>

namespace corvane {

namespace {

using media::ExportPreset;
using Violation = PathSafety::Violation;

constexpr std::chrono::milliseconds kCopyProgressInterval{50};
const QString kSourceLabel = QStringLiteral("handoff source");

bool isCancellation(const std::exception &error) {
    const auto *session = dynamic_cast<const AVExportSession::SessionError *>(&error);
    return dynamic_cast<const Cancelled *>(&error) ||
           (session && session->kind() == AVExportSession::SessionError::Kind::cancelled);
}

/// The contents of a source with a full anchor are verified while they are read, so nobody hashes
/// it ahead of that as well. Where there is no file, nothing will be read.
PathSafety::SourceGrants withoutHashing(PathSafety::SourceGrants grants, const QString &source) {
    if (PathSafety::fileType(source)) {
        grants.preverifiedAnchors = {{source, ContentHasher::AnchorVerification::matches}};
    }
    return grants;
}

Violation contentsChanged(const QString &source) {
    return {Violation::Kind::sourceIdentityChanged, source, kSourceLabel};
}

} // namespace

HandoffRowFailure failedClip(const HandoffClip &clip, const QString &error, bool cancelled) {
    return {.videoId = clip.video->id,
            .videoFileName = clip.video->fileName,
            .error = error,
            .cancelled = cancelled};
}

HandoffStep::HandoffStep(std::shared_ptr<HandoffRun> run, HandoffClip clip, int index)
    : m_run(std::move(run)), m_clip(std::move(clip)) {
    m_progress = {.index = index,
                  .total = int(m_run->plan.clips.size()),
                  .currentFilename = m_clip.video->fileName};
}

HandoffStep::~HandoffStep() = default;

QCoro::Task<> HandoffStep::perform() {
    if (isCancelled()) {
        m_run->result.failed.append(failedClip(m_clip, kCancelledText, true));
        co_return;
    }
    try {
        co_await make();
    } catch (const std::exception &error) {
        m_run->result.failed.append(isCancellation(error)
                                        ? failedClip(m_clip, kCancelledText, true)
                                        : failedClip(m_clip, failureText(describe(error))));
    }
}

void HandoffStep::takeName(ExportNameParts parts) {
    parts.mode = m_run->plan.mode;
    parts.originalFilename = m_clip.video->fileName;
    parts.options = m_run->plan.naming;
    parts.shootDate = m_run->plan.shootDate;
    parts.sequence = ++m_run->sequence;
    m_name = m_run->names.take(buildExportName(parts));
    if (wantsHDCopy()) {
        // HD copies lie in one folder and end alike, so the stems of the outputs must differ.
        m_run->names.reserveStem(paths::split(m_name).stem);
    }
    m_progress.currentFilename = m_name;
    reportPhase(Phase::starting, 0);
}

QString HandoffStep::mediaPath() const {
    return paths::joined(m_run->places.media, m_name);
}

std::optional<RootIdentity> HandoffStep::sourceIdentity() const {
    return m_run->sourceGrants.authorizedSourcePaths.value(
        paths::standardized(m_clip.video->sourcePath));
}

QCoro::Task<> HandoffStep::vet() {
    co_await userInitiatedExecutor().run([this] { vetNow(); });
}

void HandoffStep::vetNow() const {
    const QString source = paths::standardized(m_clip.video->sourcePath);
    ProxyInvariant::assertNotProxySource(source);
    PathSafety::validateSource(source, withoutHashing(m_run->sourceGrants, source), kSourceLabel);
    vetOutput(mediaPath());
}

void HandoffStep::vetOutput(const QString &path) const {
    SelectsHandoff::assertContained(path, m_run->places.folder);
    DestinationSafety::assertNoLinkedFolder(path, m_run->places.folder,
                                            QStringLiteral("handoff destination"));
}

QCoro::Task<> HandoffStep::copyBytes(Share share) {
    const QString source = paths::standardized(m_clip.video->sourcePath);
    const ImportCopier::SourceRoot root{paths::parentFolder(source), sourceIdentity()};
    std::atomic<quint64> bytesDone = 0;
    std::atomic<quint64> bytesTotal = 0;
    const auto look = [&] {
        m_progress.bytesDone = bytesDone;
        m_progress.bytesTotal = bytesTotal;
        const double total = double(m_progress.bytesTotal);
        const double done = total > 0 ? std::min(1.0, double(m_progress.bytesDone) / total) : 0;
        reportPhase(Phase::copyingMedia, share.from + done * (share.to - share.from));
    };
    const ProgressPoll poll(m_run->clock, kCopyProgressInterval, look);
    try {
        co_await userInitiatedExecutor().run([&] {
            const auto status = fileSystem().linkStatus(source);
            bytesTotal = status ? quint64(status->size) : 0;
            ImportCopier::copy(
                source, mediaPath(), root, [&](quint64 done) { bytesDone = done; }, m_run->abort);
        });
    } catch (const ImportCopier::CopyError &error) {
        if (error.kind() == ImportCopier::CopyError::Kind::sourceContentChanged) {
            throw contentsChanged(source);
        }
        throw;
    }
    look();
    m_progress.bytesDone = 0;
    m_progress.bytesTotal = 0;
}

QCoro::Task<> HandoffStep::transcode(ExportPreset preset, std::optional<ClipRange> range,
                                     Share share) {
    co_await transcodeTo(mediaPath(), preset, range, share);
}

QCoro::Task<> HandoffStep::transcodeTo(QString destination, ExportPreset preset,
                                       std::optional<ClipRange> range, Share share) {
    const QString source = paths::standardized(m_clip.video->sourcePath);
    const AVExportSession::Transcode transcode{
        .source = source,
        .destination = std::move(destination),
        .preset = preset,
        .range = range,
        .expectedIdentity = sourceIdentity(),
    };
    const auto report = [this, share](double progress) {
        reportPhase(m_progress.phase, share.from + progress * (share.to - share.from));
    };
    try {
        co_await AVExportSession::transcodeVetted(transcode, m_run->sessions, report, m_run->abort,
                                                  m_run->clock);
    } catch (const AVExportSession::SessionError &error) {
        if (error.kind() == AVExportSession::SessionError::Kind::sourceContentChanged) {
            throw contentsChanged(source);
        }
        throw;
    }
}

QCoro::Task<std::optional<QString>> HandoffStep::makeHDCopy(std::optional<ClipRange> range,
                                                            Share share) {
    if (!wantsHDCopy() || isCancelled()) {
        co_return std::nullopt;
    }
    const QString name = paths::split(m_name).stem + QStringLiteral(".mp4");
    const QString path = paths::joined(m_run->places.hd, name);
    reportPhase(Phase::copyingHD, share.from);
    try {
        co_await userInitiatedExecutor().run([this, path] { vetOutput(path); });
        co_await transcodeTo(path, ExportPreset::hd1920x1080, range, share);
    } catch (const std::exception &) {
        co_return std::nullopt;
    }
    co_return name;
}

QCoro::Task<> HandoffStep::makeFilmstrip(QString videoId) {
    try {
        co_await m_run->cacheMaker.makeFilmstrip(videoId, mediaPath(), m_run->places.cacheRoot,
                                                 m_run->abort);
    } catch (const std::exception &) {
        // What shows it draws a plain bar instead.
    }
}

void HandoffStep::deliver(const VideoItem &video, const std::optional<QString> &hdName) {
    m_run->videos.append(video);
    m_run->result.succeeded.append(
        {.videoId = video->id,
         .destinationPath = mediaPath(),
         .hdPath =
             hdName ? std::optional(paths::joined(m_run->places.hd, *hdName)) : std::nullopt});
}

void HandoffStep::reportPhase(Phase phase, double rowProgress) {
    m_progress.phase = phase;
    m_progress.rowProgress = rowProgress;
    m_run->onProgress(m_progress);
}

} // namespace corvane
