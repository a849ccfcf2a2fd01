#pragma once

#include "document/Project.h"

namespace corvane {

/// The texts of an alert that asks before something is deleted or rejected.
struct ReviewConfirmation {
    QString title;
    QString text;
    QString acceptButton;
    QString cancelButton = QStringLiteral("Cancel");

    static ReviewConfirmation deleteSubclip(const Subclip &subclip);
    static ReviewConfirmation rejectClip(const VideoRecord &video);
    /// For marked rows: `clips` counts those that aren't rejected yet. Returns nullopt if both are
    /// 0.
    static std::optional<ReviewConfirmation> applyToMarked(qsizetype subclips, qsizetype clips);

    bool operator==(const ReviewConfirmation &) const = default;
};

} // namespace corvane
