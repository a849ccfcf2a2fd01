#pragma once

#include "cli/Command.h"
#include "review/list/MixedSidebarRow.h"

/// How commands show rows of the review: clips, and subclips with the clip that they belong to.
namespace corvane {

/// Writes the members "kind", "parentId" (null for a clip), "fileName" of the clip, and every field
/// of the record.
void writeReviewRow(JSONWriter &writer, const MixedSidebarRow &row);
/// Writes the member "rows", an array of them.
void writeReviewRows(JSONWriter &writer, const QList<MixedSidebarRow> &rows);

/// A line for each row.
void printReviewRows(const CommandCall &call, const QList<MixedSidebarRow> &rows);

} // namespace corvane
