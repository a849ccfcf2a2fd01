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
            ? paths::joined(*choices.destinationFolder,
                            packageName(choices.projectName, choices.volumeLimits))
            : QStringLiteral("<destination>/<name>");
    return QStringLiteral("The handoff package will be created at %1/.").arg(folder);
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
