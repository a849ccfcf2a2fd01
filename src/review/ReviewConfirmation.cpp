#include "review/ReviewConfirmation.h"

#include "platform/TextFormat.h"
#include "review/list/ReviewFormats.h"

namespace corvane {

ReviewConfirmation ReviewConfirmation::deleteSubclip(const Subclip &subclip) {
    return {.title = QStringLiteral("Delete \"%1\"?").arg(ReviewFormats::displayName(subclip)),
            .text = QStringLiteral("Removes the subclip from the project. The source clip is "
                                   "unaffected. Cmd-Z to undo."),
            .acceptButton = QStringLiteral("Delete")};
}

ReviewConfirmation ReviewConfirmation::rejectClip(const VideoRecord &video) {
    return {.title = QStringLiteral("Reject \"%1\"?").arg(video.fileName),
            .text = QStringLiteral(
                "Marks the clip rejected — it will disappear from the visible list. Toggle 'Show "
                "rejects' to bring it back, or press X on the clip to un-reject. Cmd-Z to undo."),
            .acceptButton = QStringLiteral("Reject")};
}

std::optional<ReviewConfirmation> ReviewConfirmation::applyToMarked(qsizetype subclips,
                                                                    qsizetype clips) {
    const QString apply = QStringLiteral("Apply");
    const QString countedSubclips = counted(subclips, QStringLiteral("subclip"));
    const QString countedClips = counted(clips, QStringLiteral("clip"));
    if (subclips > 0 && clips > 0) {
        return ReviewConfirmation{
            .title = QStringLiteral("Delete %1 and reject %2?").arg(countedSubclips, countedClips),
            .text = QStringLiteral(
                "Subclips are removed from the project (source clips are unaffected). Clips are "
                "marked rejected — they'll disappear from the visible list; toggle 'Show rejects' "
                "to bring them back. Cmd-Z to undo."),
            .acceptButton = apply};
    }
    if (subclips > 0) {
        return ReviewConfirmation{
            .title = QStringLiteral("Delete %1?").arg(countedSubclips),
            .text =
                QStringLiteral("Removes the selected %1 from the project. Source clips are "
                               "unaffected. Cmd-Z to undo.")
                    .arg(subclips == 1 ? QStringLiteral("subclip") : QStringLiteral("subclips")),
            .acceptButton = apply};
    }
    if (clips > 0) {
        return ReviewConfirmation{
            .title = QStringLiteral("Reject %1?").arg(countedClips),
            .text = QStringLiteral("Rejected clips disappear from the visible list. Toggle 'Show "
                                   "rejects' to bring them back, or press X to un-reject. Cmd-Z to "
                                   "undo."),
            .acceptButton = apply};
    }
    return std::nullopt;
}

} // namespace corvane
