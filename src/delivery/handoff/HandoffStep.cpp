#include "delivery/handoff/HandoffStep.h"

#include "delivery/SourceChange.h"
#include "platform/Paths.h"

namespace corvane {

namespace {

const QString kSourceLabel = QStringLiteral("handoff source");

/// Disables hashing of an existing source, because its content is verified while it is read.
PathSafety::SourceGrants withoutHashing(PathSafety::SourceGrants grants, const QString &source) {
    if (PathSafety::fileType(source)) {
        grants.preverifiedAnchors = {{source, ContentHasher::AnchorVerification::matches}};
    }
    return grants;
}

} // namespace

HandoffRowFailure failedClip(const HandoffClip &clip, const QString &error, bool isCancelled) {
    return {.videoId = clip.video->id,
            .videoFileName = clip.video->fileName,
            .error = error,
            .cancelled = isCancelled};
}

HandoffStep::HandoffStep(std::shared_ptr<HandoffRun> run, HandoffClip clip, int index)
    : m_run(std::move(run)), m_clip(std::move(clip)) {
    const QString source = paths::standardized(m_clip.video->sourcePath);
    m_sourceRoot.path = paths::parentFolder(source);
    m_sourceRoot.identity = m_run->sourceGrants.authorizedSourcePaths.value(source);
    m_progress = {.index = index,
                  .total = int(m_run->plan.clips.size()),
                  .currentFilename = m_clip.video->fileName};
}

HandoffStep::~HandoffStep() = default;

QCoro::Task<> HandoffStep::perform() {
    try {
        if (isCancelled()) {
            throw Cancelled();
        }
        co_await make();
    } catch (const Cancelled &) {
        m_run->result.failed.append(failedClip(m_clip, kCancelledText, true));
    } catch (const std::exception &error) {
        noteSourceChange(error);
        m_run->result.failed.append(failedClip(m_clip, failureText(describe(error))));
    }
}

void HandoffStep::noteSourceChange(const std::exception &error) {
    if (isSourceChange(error)) {
        m_run->result.changedSources.append(paths::standardized(m_clip.video->sourcePath));
    }
}

void HandoffStep::takeName(ExportNameParts parts) {
    parts.mode = m_run->plan.mode;
    parts.originalFilename = m_clip.video->fileName;
    parts.options = m_run->plan.naming;
    parts.shootDate = m_run->plan.shootDate;
    parts.sequence = ++m_run->sequence;
    m_name = m_run->names.take(buildExportName(parts));
    if (hasHDCopy()) {
        // All HD copies share a folder and an extension, so the stems of the outputs must differ.
        m_run->names.reserveStem(paths::split(m_name).stem);
    }
    m_progress.currentFilename = m_name;
    reportPhase(Phase::starting, 0);
}

QString HandoffStep::mediaPath() const {
    return paths::joined(m_run->paths.media, m_name);
}

QString HandoffStep::anchoredMediaPath() const {
    return m_run->folders->media.anchoredPath(m_name);
}

QCoro::Task<> HandoffStep::validatePaths() {
    co_await userInitiatedExecutor().run([this] {
        const QString source = paths::standardized(m_clip.video->sourcePath);
        m_run->folders->assertAllInPlace();
        ProxyInvariant::assertNotProxySource(source);
        PathSafety::validateSource(source, withoutHashing(m_run->sourceGrants, source),
                                   kSourceLabel);
    });
}

QCoro::Task<> HandoffStep::makeOutput(Destination destination,
                                      std::optional<media::ExportPreset> preset,
                                      std::optional<ClipRange> range, ProgressRange progressRange) {
    const QString source = paths::standardized(m_clip.video->sourcePath);
    const auto report = [this, progressRange](const OutputProgress &progress) {
        const auto [from, to] = progressRange;
        m_progress.bytesDone = progress.bytesDone;
        m_progress.bytesTotal = progress.bytesTotal;
        reportPhase(m_progress.phase, from + progress.fraction * (to - from));
    };
    try {
        co_await m_run->maker.make({.source = source,
                                    .sourceRoot = m_sourceRoot,
                                    .destination = std::move(destination),
                                    .preset = preset,
                                    .range = range},
                                   report);
    } catch (const Failure &error) {
        if (isSourceChange(error)) {
            using Violation = PathSafety::Violation;
            throw Violation(Violation::Kind::sourceIdentityChanged, source, kSourceLabel);
        }
        throw;
    }
    m_progress.bytesDone = 0;
    m_progress.bytesTotal = 0;
}

QCoro::Task<std::optional<QString>> HandoffStep::makeHDCopy(std::optional<ClipRange> range,
                                                            ProgressRange progressRange) {
    if (!hasHDCopy() || isCancelled()) {
        co_return std::nullopt;
    }
    const QString name = paths::split(m_name).stem + QStringLiteral(".mp4");
    reportPhase(Phase::copyingHD, progressRange.from);
    try {
        co_await makeOutput({*m_run->folders->hd, name, Placing::mustBeFree},
                            media::ExportPreset::hd1920x1080, range, progressRange);
    } catch (const std::exception &error) {
        noteSourceChange(error);
        co_return std::nullopt;
    }
    co_return name;
}

void HandoffStep::addGrant(const std::optional<QString> &anchor) {
    m_run->packageGrants.add(mediaPath(), m_run->folders->media, anchor);
}

QCoro::Task<> HandoffStep::makeFilmstrip(QString videoId) {
    try {
        co_await m_run->cache.makeFilmstrip(videoId, anchoredMediaPath(),
                                            m_run->folders->cache.anchoredPath(),
                                            m_run->cancelToken->abortToken());
    } catch (const std::exception &) {
        // The scrubber shows a plain bar instead.
    }
}

QCoro::Task<> HandoffStep::deliver(VideoItem video, std::optional<QString> hdName) {
    co_await userInitiatedExecutor().run([this] { m_run->folders->assertAllInPlace(); });
    m_run->videos.append(video);
    m_run->result.succeeded.append(
        {.videoId = video->id,
         .destinationPath = mediaPath(),
         .hdPath = hdName ? std::optional(paths::joined(m_run->paths.hd, *hdName)) : std::nullopt});
}

void HandoffStep::reportPhase(Phase phase, double rowProgress) {
    m_progress.phase = phase;
    m_progress.rowProgress = rowProgress;
    m_run->onProgress(m_progress);
}

} // namespace corvane
