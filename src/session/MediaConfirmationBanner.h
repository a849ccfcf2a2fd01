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

/// Performs the action of the banner's button.
QCoro::Task<> answerBanner(ProjectStore &store, MediaConfirmationBanner::Kind kind);

} // namespace corvane
