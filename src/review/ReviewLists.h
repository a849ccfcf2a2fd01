#pragma once

#include "review/MixedSidebarRow.h"
#include "review/ReviewState.h"

/// The lists of the review screen: pure functions of the filter and the project, made anew at each
/// use in time linear in clips and subclips, but for the sort.
///
/// Which list is shown: with `subclipsView` the subclips; else with `selectedOnly` clips and
/// subclips mixed; else the clips, each with all its subclips inline below it.
namespace corvane::ReviewLists {

/// A clip's subclips as every list shows them: by `creationIndex`, stable.
QList<Subclip> inCreationOrder(QList<Subclip> subclips);

/// The clips that pass, sorted.
QList<VideoItem> visibleVideos(const ReviewState &state, const Project &project);
/// The subclips that pass, in project order whatever the sort. Whether their clip passes is no
/// matter.
QList<MixedSidebarRow> visibleSubclips(const ReviewState &state, const Project &project);
/// The clips and the subclips that pass, each for itself, in project order whatever the sort.
QList<MixedSidebarRow> mixedRows(const ReviewState &state, const Project &project);

/// The rows of the list that is shown, without inline subclips.
QList<MixedSidebarRow> shownRows(const ReviewState &state, const Project &project);
/// The rows in the order of display, inline subclips included.
QList<SidebarRowId> orderedRowIds(const ReviewState &state, const Project &project);

/// How many rows are shown, inline subclips not counted.
qsizetype visibleCount(const ReviewState &state, const Project &project);
/// How many there would be if nothing were filtered.
qsizetype totalCount(const ReviewState &state, const Project &project);
/// The words beside the filter row for the two counts.
QString countLabel(const ReviewState &state, qsizetype visible, qsizetype total);

} // namespace corvane::ReviewLists
