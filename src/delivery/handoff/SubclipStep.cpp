#include "delivery/handoff/SubclipStep.h"

namespace corvane {

namespace {

constexpr double kExtracted = 0.8;
constexpr double kFilmstripDone = 0.9;

} // namespace

SubclipStep::SubclipStep(std::shared_ptr<HandoffRun> run, HandoffClip clip, int index,
                         Subclip subclip)
    : HandoffStep(std::move(run), std::move(clip), index), m_subclip(std::move(subclip)) {}

QString SubclipStep::failureText(const QString &error) const {
    return QStringLiteral("Subclip extract: ") + error;
}

QCoro::Task<> SubclipStep::make() {
    const QString label =
        m_subclip.label.value_or(QStringLiteral("Subclip %1").arg(m_subclip.creationIndex));
    const ClipRange range =
        widenedRange(m_subclip, m_run->plan.subclipHandleSeconds, m_clip.video->durationSeconds);
    takeName({.kind = ExportRowKind::subclip,
              .subclipLabel = label,
              .subclipIndex = m_subclip.creationIndex});
    reportPhase(Phase::extractingSubclip, 0);
    co_await validatePaths();
    const auto preset =
        isFastCopy() ? media::ExportPreset::passthrough : media::ExportPreset::highestQuality;
    co_await makeOutput(mediaFile(), preset, range, {0, kExtracted});
    addGrant(std::nullopt);
    const QString id = newIdentifier();
    MetadataProcessor::Outcome facts = co_await m_run->cache.process(
        id, anchoredMediaPath(), m_run->folders->cache.anchoredPath());
    facts.videoId = id;
    reportPhase(Phase::generatingFilmstrip, kExtracted);
    co_await makeFilmstrip(id);
    const auto hdName = co_await makeHDCopy(range, {kFilmstripDone, 1});
    const auto status = co_await userInitiatedExecutor().run([file = mediaFile()] {
        return fileSystem().linkStatusAt(file.folder.descriptor(), file.name);
    });
    co_await deliver(PackageProject::clipOf(
                         {.parent = *m_clip.video,
                          .subclip = m_subclip,
                          .range = range,
                          .output = {m_name, hdName},
                          .facts = facts,
                          .fileSizeBytes = status ? std::optional(status->size) : std::nullopt},
                         m_run->clock.now()),
                     hdName);
    reportPhase(Phase::done, 1);
}

} // namespace corvane
