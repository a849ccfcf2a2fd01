#include "delivery/handoff/WholeClipStep.h"

#include "delivery/handoff/CacheCopier.h"
#include "platform/Paths.h"
#include "transfer/SidecarCopier.h"

namespace corvane {

namespace {

constexpr double kPrimaryDone = 0.7;
constexpr double kCacheDone = 0.8;

} // namespace

QCoro::Task<> WholeClipStep::make() {
    takeName({.kind = ExportRowKind::wholeClip});
    co_await validatePaths();
    co_await makePrimary();
    co_await copySidecar();
    reportPhase(Phase::copyingMedia, kPrimaryDone);
    co_await copyCache();
    const auto hdName = co_await makeHDCopy(std::nullopt, {kCacheDone, 1});
    co_await deliver(PackageProject::rewrittenClip(m_clip.video, {m_name, hdName}), hdName);
    ++m_progress.index;
    reportPhase(Phase::done, 1);
}

QCoro::Task<> WholeClipStep::makePrimary() {
    const auto preset =
        isFastCopy() ? std::nullopt : std::optional(media::ExportPreset::highestQuality);
    reportPhase(Phase::copyingMedia, 0);
    co_await makeOutput(mediaFile(), preset, std::nullopt, {0, kPrimaryDone});
    // The source's full anchor was verified during the byte copy, so it is the copy's as well.
    std::optional<QString> anchor;
    if (const auto &identity = sourceIdentity(); isFastCopy() && identity) {
        anchor = identity->contentHash;
    }
    const bool isFull = anchor && ContentHasher::parseFullAnchor(*anchor);
    addGrant(isFull ? anchor : std::nullopt);
}

/// A sidecar that is refused is missing in the package, without a word. One that is lost by a
/// failed operation is reported, but doesn't fail the clip.
QCoro::Task<> WholeClipStep::copySidecar() {
    const QString sidecar = m_clip.video->sidecarPath.value_or(QString());
    if (sidecar.isEmpty()) {
        co_return;
    }
    const QString name = PackageProject::sidecarName(m_name, sidecar);
    m_run->names.reserveStem(paths::split(m_name).stem);
    if (m_run->names.takeBesideStem(name) != name) {
        co_return; // an output has the name
    }
    try {
        co_await userInitiatedExecutor().run([this, sidecar, name] {
            SidecarCopier::copySidecar(sidecar, paths::joined(m_run->paths.media, name),
                                       m_sourceRoot, m_run->folders->media, Placing::mustBeFree,
                                       m_run->cancelToken->abortToken());
        });
    } catch (const ImportCopier::CopyError &error) {
        m_run->result.failed.append(
            failedClip(m_clip, QStringLiteral("sidecar: ") + error.description()));
    } catch (const std::exception &) {
    }
}

/// Creates what cannot be copied from the cache of the source project.
QCoro::Task<> WholeClipStep::copyCache() {
    const CacheCopier copier(m_run->plan.sourceCacheRoot, m_run->folders->cache,
                             m_run->cancelToken->abortToken());
    const auto identifier = PackageProject::canonicalIdentifier(m_clip.video->id);
    bool hasThumbnail = false;
    bool hasFilmstrip = false;
    co_await userInitiatedExecutor().run([&, video = m_clip.video] {
        copier.copySubclipThumbnails(*video);
        hasThumbnail = copier.copyThumbnail(*video);
        hasFilmstrip = copier.copyFilmstrip(*video);
    });
    if (!identifier) {
        co_return; // the id must not become part of a path
    }
    if (!hasThumbnail) {
        reportPhase(Phase::generatingThumbnail, kPrimaryDone);
        co_await m_run->cache.process(*identifier, anchoredMediaPath(),
                                      m_run->folders->cache.anchoredPath());
    }
    if (!hasFilmstrip) {
        reportPhase(Phase::generatingFilmstrip, kPrimaryDone);
        co_await makeFilmstrip(m_clip.video->id);
    }
}

} // namespace corvane
