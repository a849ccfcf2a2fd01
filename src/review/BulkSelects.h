#pragma once

#include "review/ReviewListModel.h"

/// Select and deselect all visible rows for export, and report the result in the status line.
/// Inline subclips are not included.
namespace corvane::BulkSelects {

void addVisible(ProjectStore &store, const ReviewState &state, const ReviewListModel &list);
void removeVisible(ProjectStore &store, const ReviewState &state, const ReviewListModel &list);

} // namespace corvane::BulkSelects
