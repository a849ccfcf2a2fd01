#include "delivery/handoff/HandoffPlanning.h"

#include "platform/Paths.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

HandoffClip plannedClip(const VideoItem &video, const QString &projectFile) {
    HandoffClip clip{.video = video, .isWholeClipSelected = video->selectedForExport};
    std::ranges::copy_if(video->subclips, std::back_inserter(clip.standaloneSubclips),
                         &Subclip::selectedForExport);
    VideoRecord &record = clip.video.edit();
    record.sourcePath = resolvedAgainstProject(record.sourcePath, projectFile);
    if (record.sidecarPath && !record.sidecarPath->isEmpty()) {
        record.sidecarPath = resolvedAgainstProject(*record.sidecarPath, projectFile);
    }
    return clip;
}

/// Estimates by the clip's bit rate, else by the subclip's share of the clip's size, else 0.
double estimatedBytes(const VideoRecord &video, const Subclip &subclip) {
    const double length = subclip.range().durationSeconds();
    if (video.bitRateBps && *video.bitRateBps > 0) {
        return double(*video.bitRateBps) * 0.125 * length;
    }
    if (video.fileSizeBytes && video.durationSeconds > 0) {
        return length / video.durationSeconds * double(*video.fileSizeBytes);
    }
    return 0;
}

double estimatedBytes(const HandoffClip &clip) {
    double bytes = clip.isWholeClipSelected ? double(clip.video->fileSizeBytes.value_or(0)) : 0;
    for (const Subclip &subclip : clip.standaloneSubclips) {
        bytes += estimatedBytes(*clip.video, subclip);
    }
    return bytes;
}

} // namespace

HandoffChoices defaultHandoffChoices(const Project &project) {
    const QString name = project.displayName().trimmed();
    HandoffChoices choices;
    choices.projectName =
        (name.isEmpty() ? QStringLiteral("Project") : name) + QStringLiteral(" - Selects");
    applyPreset(choices.naming, choices.namingPreset, project.displayName());
    return choices;
}

QList<HandoffClip> planClips(const Project &project) {
    QList<HandoffClip> clips;
    for (const VideoItem &video : project.videos) {
        const bool isIncluded = video->selectedForExport ||
                                std::ranges::any_of(video->subclips, &Subclip::selectedForExport);
        if (isIncluded) {
            clips.append(plannedClip(video, project.filePath));
        }
    }
    return clips;
}

HandoffPlan makePlan(const Project &project, const HandoffChoices &choices) {
    return {.sourceProjectFilePath = project.filePath,
            .sourceCacheRoot = cacheRoot(project.filePath),
            .destinationFolder = *choices.destinationFolder,
            .projectName = packageName(choices.projectName, choices.volumeLimits),
            .shootDate = project.shootDate,
            .clientOrSeries = project.clientOrSeries,
            .location = project.location,
            .notes = project.notes,
            .mode = choices.mode,
            .outputMode = choices.outputMode,
            .subclipHandleSeconds = choices.subclipHandleSeconds,
            .naming = choices.naming,
            .volumeLimits = choices.volumeLimits,
            .clips = planClips(project)};
}

QString packageName(const QString &projectName, const VolumeLimits &limits) {
    const QString clean = sanitizeNameComponent(projectName);
    if (clean.isEmpty()) {
        return QStringLiteral("Selects");
    }
    // Leaves room for the number of the folder and for the extension of the project file.
    const QString number(13, QLatin1Char('0'));
    const QString extension = QStringLiteral(".corvane");
    return limits.fittedName(limits.fittedName(clean) + extension, number)
        .chopped(number.size() + extension.size());
}

quint64 estimatedBytes(const QList<HandoffClip> &clips) {
    double bytes = 0;
    for (const HandoffClip &clip : clips) {
        bytes += estimatedBytes(clip);
    }
    constexpr double kMost = 1e18; // a damaged document may contain any number
    return std::isfinite(bytes) ? quint64(std::clamp(bytes, 0.0, kMost)) : quint64(kMost);
}

} // namespace corvane
