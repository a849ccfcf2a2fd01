#include "delivery/handoff/WholeClipStep.h"

#include "delivery/handoff/CacheCarrier.h"
#include "platform/Paths.h"
#include "transfer/SidecarCopier.h"

namespace corvane {

namespace {

constexpr double kPrimaryDone = 0.7;
constexpr double kCacheDone = 0.8;

} // namespace

QCoro::Task<> WholeClipStep::make() {
    takeName({.kind = ExportRowKind::wholeClip});
    co_await vet();
    co_await makePrimary();
    co_await copySidecar();
    reportPhase(Phase::copyingMedia, kPrimaryDone);
    co_await carryCache();
    const auto hdName = co_await makeHDCopy(std::nullopt, {kCacheDone, 1});
    deliver(PackageProject::rewrittenClip(m_clip.video, {m_name, hdName}), hdName);
    ++m_progress.index;
    reportPhase(Phase::done, 1);
}

/// A byte copy has the very bytes that the source's anchor was proved by.
QCoro::Task<> WholeClipStep::makePrimary() {
    const bool isByteCopy = m_run->plan.mode == ExportBatch::Mode::fastCopy;
    reportPhase(Phase::copyingMedia, 0);
    if (!isByteCopy) {
        co_await transcode(media::ExportPreset::highestQuality, std::nullopt, {0, kPrimaryDone});
        m_run->packageGrants.add(mediaPath(), std::nullopt);
        co_return;
    }
    co_await copyBytes({0, kPrimaryDone});
    const auto identity = sourceIdentity();
    const bool isProved =
        identity && identity->contentHash && ContentHasher::parseFullAnchor(*identity->contentHash);
    m_run->packageGrants.add(mediaPath(), isProved ? identity->contentHash : std::nullopt);
}

/// A sidecar that is refused or can't be copied is left out without a word.
QCoro::Task<> WholeClipStep::copySidecar() {
    const QString sidecar = m_clip.video->sidecarPath.value_or(QString());
    if (sidecar.isEmpty()) {
        co_return;
    }
    const QString name = PackageProject::sidecarName(m_name, sidecar);
    m_run->names.reserveStem(paths::split(m_name).stem);
    if (m_run->names.takeBesideStem(name) != name) {
        co_return; // some output has the name already
    }
    try {
        co_await userInitiatedExecutor().run([this, sidecar, name] {
            SidecarCopier::copySidecar(sidecar, paths::joined(m_run->places.media, name),
                                       m_clip.video->sourcePath, m_run->places.media, m_run->abort);
        });
    } catch (const std::exception &) {
    }
}

QCoro::Task<> WholeClipStep::carryCache() {
    const CacheCarrier carrier(m_run->plan.sourceCacheRoot, m_run->places.cacheRoot, m_run->abort);
    const auto identifier = PackageProject::canonicalIdentifier(m_clip.video->id);
    struct Carried {
        bool thumbnail = false;
        bool filmstrip = false;
    };
    const VideoItem video = m_clip.video;
    const Carried carried = co_await userInitiatedExecutor().run([&carrier, video] {
        carrier.carrySubclipThumbnails(*video);
        return Carried{carrier.carryThumbnail(*video), carrier.carryFilmstrip(*video)};
    });
    if (!identifier) {
        co_return; // such an id names no file
    }
    if (!carried.thumbnail) {
        reportPhase(Phase::generatingThumbnail, kPrimaryDone);
        co_await m_run->cacheMaker.process(*identifier, mediaPath(), m_run->places.cacheRoot);
    }
    if (!carried.filmstrip) {
        reportPhase(Phase::generatingFilmstrip, kPrimaryDone);
        co_await makeFilmstrip(m_clip.video->id);
    }
}

} // namespace corvane
