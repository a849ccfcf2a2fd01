#pragma once

#include "document/Project.h"

namespace corvane {

/// A question of the delete key as an alert of the normal style: two buttons, the first of them the
/// default. Nothing is done before it is answered with that one.
struct ReviewConfirmation {
    QString title;
    QString text;
    QString acceptButton;
    QString cancelButton = QStringLiteral("Cancel");

    static ReviewConfirmation deleteSubclip(const Subclip &subclip);
    static ReviewConfirmation rejectClip(const VideoRecord &video);
    /// So many marked subclips, and so many marked clips that aren't rejected yet. Nothing where
    /// there is neither.
    static std::optional<ReviewConfirmation> applyToMarked(qsizetype subclips, qsizetype clips);

    bool operator==(const ReviewConfirmation &) const = default;
};

} // namespace corvane
