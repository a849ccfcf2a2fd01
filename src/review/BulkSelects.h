#pragma once

#include "review/ReviewListModel.h"

namespace corvane {

/// Selects or deselects all visible rows for export, and reports the result in the status line.
/// Inline subclips are not included.
void setVisibleSelected(ProjectStore &store, const ReviewState &state, const ReviewListModel &list,
                        bool isSelected);

} // namespace corvane
