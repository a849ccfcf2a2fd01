#include "session/MediaConfirmationBanner.h"

#include "platform/Paths.h"
#include "platform/TextFormat.h"

namespace corvane {

namespace {

using Banner = MediaConfirmationBanner;

constexpr qsizetype kMaxNames = 3;

/// "a.mov, b.mov, c.mov and 4 more"
QString nameList(const QStringList &files) {
    QStringList names;
    for (const QString &path : files.first(std::min(files.size(), kMaxNames))) {
        names.append(paths::lastComponent(path));
    }
    const QString list = names.join(QStringLiteral(", "));
    return files.size() > kMaxNames ? QStringLiteral("%1 and %2 more")
                                          .arg(list, QString::number(files.size() - kMaxNames))
                                    : list;
}

/// "1 file (a.mov)" or "2 files, including a.mov, b.mov"
QString oneOrMany(const QStringList &files) {
    return files.size() == 1 ? QStringLiteral("1 file (%1)").arg(nameList(files))
                             : QStringLiteral("%1 files, including %2")
                                   .arg(QString::number(files.size()), nameList(files));
}

/// A banner that lists files.
Banner fileBanner(Banner::Kind kind, const QString &message, const QString &button,
                  const QStringList &files, const QString &noun = QStringLiteral("paths")) {
    const QString disclosure = QStringLiteral("Show all %1 %2");
    return {.kind = kind,
            .icon = QStringLiteral("exclamationmark.triangle"),
            .message = message,
            .button = button,
            .disclosure =
                files.isEmpty() ? QString() : disclosure.arg(QString::number(files.size()), noun),
            .paths = files};
}

Banner legacyPackageBanner() {
    return {.kind = Banner::Kind::legacyPackage,
            .icon = QStringLiteral("exclamationmark.triangle"),
            .message = QStringLiteral("This project's media folder hasn't been authorized, so "
                                      "Export and Handoff will refuse its clips."),
            .button = QStringLiteral("Authorize This Project's Media"),
            .isClosable = true};
}

Banner legacyProjectIdBanner(const QStringList &files) {
    const QString message =
        files.isEmpty()
            ? QStringLiteral("This project has media authorizations carried over from an older "
                             "version that need confirmation.")
            : QStringLiteral("This project has media access to %1 recorded by an older version of "
                             "Corvane for a project with this project's identifier. Confirm only "
                             "if you recognize this project.")
                  .arg(oneOrMany(files));
    return fileBanner(Banner::Kind::legacyProjectId, message,
                      QStringLiteral("Confirm This Project's Media"), files);
}

Banner unresolvedBanner(const QStringList &files) {
    const QString message =
        files.isEmpty()
            ? QStringLiteral("This project has external media whose location was never confirmed.")
            : QStringLiteral("This project has %1 outside its media folder whose identity was "
                             "never confirmed. Confirming trusts whatever is currently at that "
                             "location -- only confirm if you know what's mounted there right now.")
                  .arg(oneOrMany(files));
    return fileBanner(Banner::Kind::unresolved, message,
                      QStringLiteral("Confirm This Media's Location"), files);
}

Banner contentMismatchBanner(const QStringList &files) {
    const QString what =
        files.size() == 1
            ? QStringLiteral("%1 is not the file this project authorized").arg(nameList(files))
            : QStringLiteral("%1 files are not the ones this project authorized, including %2")
                  .arg(QString::number(files.size()), nameList(files));
    Banner banner = fileBanner(
        Banner::Kind::contentMismatch,
        what + QStringLiteral(" — their contents changed since you approved them. Confirming "
                              "trusts the new contents. Only confirm if you changed these files "
                              "yourself."),
        QStringLiteral("Trust the New Contents"), files, QStringLiteral("files"));
    banner.icon = QStringLiteral("exclamationmark.triangle.fill");
    return banner;
}

} // namespace

QList<Banner> mediaConfirmationBanners(const MediaConfirmation &state) {
    QList<Banner> banners;
    if (state.legacyPackageMediaNeedsAuthorization) {
        banners.append(legacyPackageBanner());
    }
    if (state.legacyProjectIdMediaNeedsConfirmation) {
        banners.append(legacyProjectIdBanner(state.legacyProjectIdMediaPendingPaths));
    }
    if (state.unresolvedMediaNeedsConfirmation) {
        banners.append(unresolvedBanner(state.unresolvedMediaPendingPaths));
    }
    // The message needs at least one file name.
    if (state.contentMismatchNeedsConfirmation && !state.contentMismatchPendingPaths.isEmpty()) {
        banners.append(contentMismatchBanner(state.contentMismatchPendingPaths));
    }
    return banners;
}

QString unconfirmedText(qsizetype count) {
    return count == 1 ? QStringLiteral("1 file can't be read and was not confirmed. Check that its "
                                       "drive is connected, then confirm again.")
                      : QStringLiteral("%1 files can't be read and were not confirmed. Check that "
                                       "their drive is connected, then confirm again.")
                            .arg(count);
}

QString cancelledAnswerText(qsizetype count) {
    return QStringLiteral("Cancelled. %1 for your confirmation.")
        .arg(count == 1 ? QStringLiteral("1 file still waits")
                        : QStringLiteral("%1 files still wait").arg(count));
}

QString hashingText(const HashingProgress &progress, const QString &timeLeft) {
    const QString bytes = formattedByteCount(quint64(progress.bytesDone)) + QStringLiteral(" / ") +
                          formattedByteCount(quint64(progress.bytesTotal));
    return timeLeft.isEmpty() ? bytes : bytes + QStringLiteral(". ") + timeLeft;
}

QCoro::Task<> answerBanner(ProjectStore &store, Banner::Kind kind) {
    switch (kind) {
    case Banner::Kind::legacyPackage:
        return store.authorizeLegacyPackageMedia();
    case Banner::Kind::legacyProjectId:
        return store.confirmLegacyProjectIdMedia();
    case Banner::Kind::unresolved:
        return store.confirmUnresolvedMedia();
    case Banner::Kind::contentMismatch:
        break;
    }
    return store.trustChangedContents();
}

} // namespace corvane
