#include "import/ImportTexts.h"

#include "platform/TextFormat.h"

#include <algorithm>

namespace corvane {

QString foundText(const QList<ImportPreviewRow> &rows) {
    return QStringLiteral("Found ") + counted(rows.size(), QStringLiteral("video"));
}

QString alreadyImportedText(const QList<ImportPreviewRow> &rows) {
    const auto count =
        std::ranges::count(rows, CollisionStatus::alreadyImported, &ImportPreviewRow::status);
    return count == 0 ? QString() : QStringLiteral(" · %1 already imported.").arg(count);
}

QString leftOutText(const LeftOut &leftOut) {
    QStringList parts;
    const auto add = [&parts](int count, const QString &one, const QString &several) {
        if (count > 0) {
            parts.append(QString::number(count) + QLatin1Char(' ') + (count == 1 ? one : several));
        }
    };
    add(leftOut.notMedia, QStringLiteral("file that isn't a video or audio file"),
        QStringLiteral("files that aren't video or audio files"));
    add(leftOut.symbolicLinks, QStringLiteral("symbolic link"), QStringLiteral("symbolic links"));
    add(leftOut.unreadable, QStringLiteral("file or folder that can't be read"),
        QStringLiteral("files or folders that can't be read"));
    add(leftOut.invalidNames, QStringLiteral("name that isn't valid UTF-8"),
        QStringLiteral("names that aren't valid UTF-8"));
    return parts.isEmpty() ? QString()
                           : QStringLiteral("Left out: ") + parts.join(QStringLiteral(", "));
}

QList<ImportFailure> unreadableFailures(const QList<UnreadableEntry> &entries) {
    QList<ImportFailure> failures;
    for (const UnreadableEntry &entry : entries) {
        failures.append({entry.path, QStringLiteral("It can't be read: %1. Nothing in it was "
                                                    "imported. Check the drive, then import again.")
                                         .arg(entry.error)});
    }
    return failures;
}

QString refusedText(int count) {
    if (count == 0) {
        return {};
    }
    return QStringLiteral("%1 already imported can't be read for this project until you confirm. "
                          "The banner over the review asks about them.")
        .arg(counted(count, QStringLiteral("file")));
}

QString recordingText() {
    return QStringLiteral("Recording what was imported…");
}

QString metadataText(const QString &fileName) {
    return QStringLiteral("Reading metadata: ") + fileName;
}

QString cancelledText(int notImported, int pending) {
    QString text =
        QStringLiteral("Cancelled. Clips whose metadata wasn't read yet stay without it.");
    if (notImported > 0) {
        text = QStringLiteral("Cancelled. %1 not imported.")
                   .arg(counted(notImported, QStringLiteral("video")) +
                        QLatin1String(notImported == 1 ? " was" : " were"));
    }
    if (pending > 0) {
        text += QStringLiteral(" %1 not read to the end, so the banner over the review asks about "
                               "%2.")
                    .arg(pending == 1 ? QStringLiteral("1 imported clip was")
                                      : QStringLiteral("%1 imported clips were").arg(pending),
                         QLatin1String(pending == 1 ? "it" : "them"));
    }
    return text;
}

QString unreadableClipText() {
    return QStringLiteral("The clip was imported, but it can't be read to its end, so Export and "
                          "Handoff refuse it. Confirm it in the banner over the review or with "
                          "\"corvane-cli media\" when it can be read.");
}

} // namespace corvane
