#pragma once

#include "session/ProjectStore.h"

namespace corvane {

/// One banner of the review screen: what the registry can't vouch for, why that matters, and the
/// answer that the user may give.
struct MediaConfirmationBanner {
    enum class Kind { legacyPackage, legacyProjectId, unresolved, contentMismatch };

    Kind kind = Kind::legacyPackage;
    QString icon; ///< a symbol name
    QString message;
    QString button;
    QString disclosure; ///< the label that unfolds the paths; empty where there are none
    QStringList paths;
    bool isClosable = false; ///< has a cross, which hides it for the moment and changes nothing

    bool operator==(const MediaConfirmationBanner &) const = default;
};

/// The banners of the flags that are up, the most serious last.
QList<MediaConfirmationBanner> mediaConfirmationBanners(const MediaConfirmation &state);

/// What a banner's button does.
QCoro::Task<> answerBanner(ProjectStore &store, MediaConfirmationBanner::Kind kind);

} // namespace corvane
