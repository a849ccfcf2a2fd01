#include "delivery/handoff/HandoffTexts.h"

#include "delivery/DeliveryTexts.h"
#include "platform/Paths.h"
#include "platform/TextFormat.h"

namespace corvane::HandoffTexts {

namespace {

QString phaseText(HandoffProgress::Phase phase) {
    using Phase = HandoffProgress::Phase;
    switch (phase) {
    case Phase::starting:
        return {};
    case Phase::copyingMedia:
        return QStringLiteral("Copying media");
    case Phase::extractingSubclip:
        return QStringLiteral("Extracting subclip");
    case Phase::generatingThumbnail:
        return QStringLiteral("Generating thumbnail");
    case Phase::generatingFilmstrip:
        return QStringLiteral("Generating filmstrip");
    case Phase::copyingHD:
        return QStringLiteral("Encoding HD copy");
    case Phase::writingProject:
        return QStringLiteral("Writing project file");
    case Phase::done:
        break;
    }
    return QStringLiteral("Row done");
}

} // namespace

QString packageLocation(const HandoffChoices &choices) {
    const QString folder =
        choices.destinationFolder
            ? paths::joined(*choices.destinationFolder, packageName(choices.projectName))
            : QStringLiteral("<destination>/<name>");
    return QStringLiteral("The handoff package will be created at %1/.").arg(folder);
}

QString projectNamePlaceholder() {
    return QStringLiteral("MyProject - Selects");
}

QString projectNameHelp() {
    return QStringLiteral("Used as both the package folder name and the .corvane filename.");
}

QString help(ExportBatch::Mode mode) {
    if (mode == ExportBatch::Mode::fastCopy) {
        return DeliveryTexts::fastCopyHelp();
    }
    return QStringLiteral("H.264/AAC re-encode at HighestQuality. Frame-accurate trims; output is "
                          ".mp4 always.");
}

QString label(HandoffOutputMode mode) {
    return mode == HandoffOutputMode::primaryOnly ? QStringLiteral("Primary only")
                                                  : QStringLiteral("Primary + HD");
}

QString help(HandoffOutputMode mode) {
    if (mode == HandoffOutputMode::primaryOnly) {
        return QStringLiteral("Source-quality clips + extracted subclips only.");
    }
    return QStringLiteral("Each output gets a 1080p H.264 sibling under media/HD/. The .corvane "
                          "marks clips with hdPath so the sidebar can show an HD badge.");
}

QString handlesHelp() {
    return QStringLiteral(
        "Extra time before in-point and after out-point of extracted subclips. Useful for room "
        "tone or NLE re-trim. Skipped for whole-clip rows.");
}

QString contentsSummary(const QList<HandoffClip> &clips) {
    qsizetype wholeClips = 0;
    qsizetype subclips = 0;
    for (const HandoffClip &clip : clips) {
        wholeClips += clip.isWholeClipSelected ? 1 : 0;
        subclips += clip.standaloneSubclips.size();
    }
    return QStringList{counted(wholeClips, QStringLiteral("clip")),
                       counted(subclips, QStringLiteral("subclip")),
                       counted(wholeClips + subclips, QStringLiteral("output")),
                       QLatin1Char('~') + formattedByteCount(estimatedBytes(clips))}
        .join(QStringLiteral(", "));
}

QString symbol(const HandoffClip &clip) {
    return DeliveryTexts::symbol(clip.isWholeClipSelected ? ExportRowKind::wholeClip
                                                          : ExportRowKind::subclip);
}

QString contents(const HandoffClip &clip) {
    QStringList parts;
    if (clip.isWholeClipSelected) {
        parts.append(QStringLiteral("clip"));
    }
    if (!clip.standaloneSubclips.isEmpty()) {
        parts.append(counted(clip.standaloneSubclips.size(), QStringLiteral("subclip")));
    }
    return parts.join(QStringLiteral(" + "));
}

QString nothingToHandOff() {
    return QStringLiteral("Nothing to hand off. Mark clips with the S flag in Review (or set up "
                          "subclips), then come back here.");
}

QString rowLine(const HandoffProgress &progress) {
    QStringList parts{phaseText(progress.phase),
                      DeliveryTexts::byteCounts(progress.bytesDone, progress.bytesTotal)};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

QString headline(const HandoffResult &result) {
    return DeliveryTexts::headline(QStringLiteral("Handoff"), result.cancelled,
                                   result.failed.size() + (result.generalError ? 1 : 0));
}

QString row(const HandoffRowFailure &failure) {
    return failure.videoFileName + QStringLiteral(": ") + failure.error;
}

} // namespace corvane::HandoffTexts
