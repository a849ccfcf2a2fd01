#include "cli/ReviewRows.h"

#include "cli/JSONMembers.h"
#include "cli/TextTable.h"
#include "review/list/ReviewFormats.h"

namespace corvane {

namespace {

QString starsText(int rating) {
    return rating > 0 ? QString::number(rating) + QStringLiteral("★") : QStringLiteral("-");
}

QString secondsText(double seconds) {
    return QString::number(seconds, 'f', 2) + QStringLiteral(" s");
}

/// A clip's length; "-" while it isn't known.
QString lengthText(double seconds) {
    return seconds > 0 ? secondsText(seconds) : QStringLiteral("-");
}

/// A letter for each flag that is set: selected, favorite, rejected, reviewed, exported.
QString flagsText(const VideoRecord &video) {
    QString flags;
    flags += video.selectedForExport ? QLatin1Char('S') : QLatin1Char('-');
    flags += video.favorite ? QLatin1Char('F') : QLatin1Char('-');
    flags += video.rejected ? QLatin1Char('X') : QLatin1Char('-');
    flags += video.reviewed ? QLatin1Char('R') : QLatin1Char('-');
    flags += video.exportedAt ? QLatin1Char('E') : QLatin1Char('-');
    return flags;
}

QString flagsText(const Subclip &subclip) {
    VideoRecord flags;
    flags.selectedForExport = subclip.selectedForExport;
    flags.favorite = subclip.favorite;
    flags.exportedAt = subclip.exportedAt;
    return flagsText(flags);
}

QString subclipName(const MixedSidebarRow &row) {
    const Subclip &subclip = *row.subclip;
    return QStringLiteral("%1: %2, %3 to %4")
        .arg(row.video->fileName, ReviewFormats::displayName(subclip),
             secondsText(subclip.inSeconds), secondsText(subclip.outSeconds));
}

QStringList cellsOf(const MixedSidebarRow &row) {
    if (!row.subclip) {
        return {row.video->id, starsText(row.video->rating), flagsText(*row.video),
                lengthText(row.video->durationSeconds), row.video->fileName};
    }
    return {row.subclip->id, starsText(row.subclip->rating), flagsText(*row.subclip),
            secondsText(row.subclip->outSeconds - row.subclip->inSeconds), subclipName(row)};
}

} // namespace

void writeReviewRow(JSONWriter &writer, const MixedSidebarRow &row) {
    if (row.subclip) {
        writeMember(writer, "kind", QStringLiteral("subclip"));
        writeMember(writer, "parentId", row.video->id);
        writeMember(writer, "fileName", row.video->fileName);
        writeMembers(writer, *row.subclip);
    } else {
        writeMember(writer, "kind", QStringLiteral("clip"));
        writeMember(writer, "parentId", std::optional<QString>());
        writeMembers(writer, *row.video);
    }
}

void writeReviewRows(JSONWriter &writer, const QList<MixedSidebarRow> &rows) {
    writeRows(writer, "rows", rows,
              [&](const MixedSidebarRow &row) { writeReviewRow(writer, row); });
}

void printReviewRows(const CommandCall &call, const QList<MixedSidebarRow> &rows) {
    TextTable table({QStringLiteral("ID"), QStringLiteral("RATING"), QStringLiteral("FLAGS"),
                     QStringLiteral("LENGTH"), QStringLiteral("NAME")});
    for (const MixedSidebarRow &row : rows) {
        table.addRow(cellsOf(row));
    }
    table.print(call);
}

} // namespace corvane
