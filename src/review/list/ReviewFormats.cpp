#include "review/list/ReviewFormats.h"

#include "platform/TextFormat.h"

namespace corvane::ReviewFormats {

namespace {

/// The marks that clips and subclips have in common.
QStringList marksInWords(int rating, bool favorite, bool selectedForExport) {
    QStringList words;
    if (rating > 0) {
        words.append(counted(rating, QStringLiteral("star")));
    }
    if (favorite) {
        words.append(QStringLiteral("favorite"));
    }
    if (selectedForExport) {
        words.append(QStringLiteral("selected for export"));
    }
    return words;
}

} // namespace

QString subclipRange(const Subclip &subclip) {
    return QStringLiteral("%1 – %2").arg(formattedSubclipTime(subclip.inSeconds),
                                         formattedSubclipTime(subclip.outSeconds));
}

QString subclipLength(const Subclip &subclip) {
    return formattedSubclipTime(subclip.outSeconds - subclip.inSeconds);
}

QString displayName(const Subclip &subclip) {
    return subclip.label && !subclip.label->isEmpty()
               ? *subclip.label
               : QStringLiteral("Subclip %1").arg(subclip.creationIndex);
}

QString rating(int rating) {
    return rating > 0 ? QString::number(rating) : QString();
}

QString subclipCount(qsizetype count) {
    return count > 0 ? counted(count, QStringLiteral("subclip")) : QString();
}

QString details(const VideoRecord &video) {
    const QString count = subclipCount(video.subclips.size());
    return formattedDuration(video.durationSeconds) +
           (count.isEmpty() ? QString() : QStringLiteral(" · ") + count);
}

QString description(const VideoRecord &video) {
    QStringList words{formattedDuration(video.durationSeconds)};
    if (!video.subclips.isEmpty()) {
        words.append(subclipCount(video.subclips.size()));
    }
    words += marksInWords(video.rating, video.favorite, video.selectedForExport);
    if (video.reviewed) {
        words.append(QStringLiteral("reviewed"));
    }
    if (video.rejected) {
        words.append(QStringLiteral("rejected"));
    }
    if (video.hdPath) {
        words.append(QStringLiteral("HD"));
    }
    return words.join(QStringLiteral(", "));
}

QString description(const Subclip &subclip) {
    const QStringList words{subclipRange(subclip)};
    return (words + marksInWords(subclip.rating, subclip.favorite, subclip.selectedForExport))
        .join(QStringLiteral(", "));
}

} // namespace corvane::ReviewFormats
