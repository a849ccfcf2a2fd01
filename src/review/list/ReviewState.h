#pragma once

#include "document/Project.h"

namespace corvane {

/// The settings of the review screen's filter row: which clips and subclips are listed, and the
/// order of the clips. A plain value that is not saved with the project.
struct ReviewState {
    /// Which ratings pass: all, those from `least` up, or exactly 5.
    struct RatingFilter {
        enum class Kind { off, threshold, fiveOnly };

        static RatingFilter threshold(int least) { return {Kind::threshold, least}; }
        static RatingFilter fiveOnly() { return {Kind::fiveOnly, 0}; }

        bool passes(int rating) const;

        bool operator==(const RatingFilter &) const = default;

        Kind kind = Kind::off;
        int least = 0; ///< only with `threshold`
    };

    enum class Sort { filename, imported, rating, duration };

    /// The lists that a state can show.
    enum class ShownList {
        visibleVideos,   ///< sorted clips, each followed by all of its subclips (inline subclips)
        visibleSubclips, ///< subclips in project order
        mixedRows,       ///< clips and subclips in project order
    };

    bool unreviewedOnly = false;
    bool favoritesOnly = false;
    bool selectedOnly = false;
    bool subclipsView = false;
    RatingFilter ratingFilter;
    QString searchQuery; ///< as typed
    Sort sort = Sort::filename;
    bool includeRejects = false;
    bool useLargeThumbnails = false;

    bool operator==(const ReviewState &) const = default;

    ShownList shownList() const;

    /// The query, trimmed and in lower case. An empty query matches everything.
    QString normalizedQuery() const;

    /// True if nothing is filtered, whatever the sort and the size of the thumbnails.
    bool filtersAreDefault() const;
    /// Resets every filter. Keeps the sort and the size of the thumbnails.
    void clearFilters();

    /// The text beside the filter row. The counts are those of `ReviewListing`.
    QString countLabel(qsizetype visible, qsizetype total) const;
};

/// Keys on the command line. The screen has labels of its own.
template <>
inline constexpr auto rawValues<ReviewState::Sort> = std::to_array<RawValue<ReviewState::Sort>>({
    {ReviewState::Sort::filename, "filename"},
    {ReviewState::Sort::imported, "imported"},
    {ReviewState::Sort::rating, "rating"},
    {ReviewState::Sort::duration, "duration"},
});

/// The fields of a clip that a filter reads, apart from its texts. `ReviewIndex` stores them side
/// by side, so that filtering many clips does not touch their records.
struct ClipFlags {
    static ClipFlags of(const VideoRecord &video);

    bool rejected = false;
    bool reviewed = false;
    bool favorite = false;
    bool selectedForExport = false;
    int rating = 0;
};

/// The conditions of a state other than the search. The state must outlive it.
class ReviewFilter {
  public:
    explicit ReviewFilter(const ReviewState &state) : m_state(state) {}

    bool passes(const ClipFlags &clip) const;
    /// A subclip is rejected or reviewed if its clip is, and has the clip's rating while it has
    /// none of its own.
    bool passes(const Subclip &subclip, const ClipFlags &clip) const;

  private:
    bool passesClipConditions(const ClipFlags &clip) const;

    const ReviewState &m_state;
};

} // namespace corvane
