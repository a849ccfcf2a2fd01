#pragma once

#include "session/ProjectStore.h"

namespace corvane {

/// A banner of the review screen, which asks the user to confirm media.
struct MediaConfirmationBanner {
    enum class Kind { legacyPackage, legacyProjectId, unresolved, contentMismatch };

    Kind kind = Kind::legacyPackage;
    QString icon; ///< symbol name
    QString message;
    QString button;
    QString disclosure; ///< label that shows the paths; empty if there are none
    QStringList paths;
    bool isClosable = false; ///< can be hidden until the next time, without an answer

    bool operator==(const MediaConfirmationBanner &) const = default;
};

/// Returns a banner for each flag that is set, the most serious last.
QList<MediaConfirmationBanner> mediaConfirmationBanners(const MediaConfirmation &state);

/// Says that `count` files could not be read, so that an answer did not grant them.
QString unconfirmedText(qsizetype count);

/// Says that the user cancelled an answer with `count` files still pending.
QString cancelledAnswerText(qsizetype count);

/// "1.2 GB / 30.0 GB. About 3 min left". `timeLeft` may be empty.
QString hashingText(const HashingProgress &progress, const QString &timeLeft);

/// Performs the action of the banner's button.
QCoro::Task<> answerBanner(ProjectStore &store, MediaConfirmationBanner::Kind kind);

} // namespace corvane
