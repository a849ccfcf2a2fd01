#pragma once

#include "review/ReviewListModel.h"

/// "Add to Selects" and "Remove from Selects": the visible rows as they are at the click, and the
/// outcome in the status line. Inline subclips are no rows of their own here.
namespace corvane::BulkSelects {

void addVisible(ProjectStore &store, const ReviewState &state, const ReviewListModel &list);
void removeVisible(ProjectStore &store, const ReviewState &state, const ReviewListModel &list);

} // namespace corvane::BulkSelects
