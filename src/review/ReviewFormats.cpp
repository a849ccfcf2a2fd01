#include "review/ReviewFormats.h"

#include "platform/TextFormat.h"

#include <algorithm>
#include <cmath>

namespace corvane::ReviewFormats {

namespace {

/// Seconds that can be counted in whole numbers, or nothing for what is no time.
std::optional<qint64> wholeUnits(double seconds, double unitsPerSecond) {
    if (!std::isfinite(seconds) || seconds < 0) {
        return std::nullopt;
    }
    constexpr double kMostUnits = 1e15;
    return qint64(std::floor(std::min(seconds * unitsPerSecond, kMostUnits)));
}

/// What a clip and a subclip have alike.
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

QString inOneLine(const QStringList &words) {
    return words.join(QStringLiteral(", "));
}

QString twoDigits(qint64 number) {
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

} // namespace

QString transportTime(double seconds) {
    const qint64 whole = wholeUnits(seconds, 1).value_or(0);
    return QStringLiteral("%1:%2:%3")
        .arg(twoDigits(whole / 3600), twoDigits(whole / 60 % 60), twoDigits(whole % 60));
}

QString subclipTime(double seconds) {
    const auto hundredths = wholeUnits(seconds, 100);
    if (!hundredths) {
        return QStringLiteral("00:00");
    }
    return QStringLiteral("%1:%2.%3")
        .arg(twoDigits(*hundredths / 6000), twoDigits(*hundredths / 100 % 60),
             twoDigits(*hundredths % 100));
}

QString subclipRange(const Subclip &subclip) {
    return QStringLiteral("%1 – %2").arg(subclipTime(subclip.inSeconds),
                                         subclipTime(subclip.outSeconds));
}

QString subclipLength(const Subclip &subclip) {
    return subclipTime(subclip.outSeconds - subclip.inSeconds);
}

QString duration(double seconds) {
    const auto whole = wholeUnits(seconds, 1);
    if (!whole) {
        return QStringLiteral("—");
    }
    const QString tail = twoDigits(*whole % 60);
    if (*whole < 3600) {
        return QStringLiteral("%1:%2").arg(*whole / 60).arg(tail);
    }
    return QStringLiteral("%1:%2:%3").arg(*whole / 3600).arg(twoDigits(*whole / 60 % 60), tail);
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
    return duration(video.durationSeconds) +
           (count.isEmpty() ? QString() : QStringLiteral(" · ") + count);
}

QString description(const VideoRecord &video) {
    QStringList words{duration(video.durationSeconds)};
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
    return inOneLine(words);
}

QString description(const Subclip &subclip) {
    return inOneLine(QStringList{subclipRange(subclip)} +
                     marksInWords(subclip.rating, subclip.favorite, subclip.selectedForExport));
}

QString countInParentheses(qsizetype count) {
    return QStringLiteral("(%1)").arg(count);
}

} // namespace corvane::ReviewFormats
