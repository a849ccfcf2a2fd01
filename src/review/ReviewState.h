#pragma once

#include "document/Project.h"

namespace corvane {

/// What the review screen's filter row says: which clips and subclips are listed, and the clips'
/// order. A plain value that lives in memory alone; nothing of it is saved with the project.
///
/// The operations are pure functions of the value and what they are given. They touch no file.
/// The lists of the screen, made of these, are in `ReviewLists`.
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

    bool unreviewedOnly = false;
    bool favoritesOnly = false;
    bool selectedOnly = false;
    bool subclipsView = false;
    RatingFilter ratingFilter;
    QString searchQuery; ///< as it was typed
    Sort sort = Sort::filename;
    bool includeRejects = false;
    bool useLargeThumbnails = false;

    bool operator==(const ReviewState &) const = default;

    /// The query as it is searched for: trimmed and in lower case; empty searches for nothing.
    QString normalizedQuery() const;

    /// The clips that pass, in the order given. `sorted` is still to be applied.
    QList<VideoItem> visibleVideos(const QList<VideoItem> &videos) const;
    /// A stable sort by `sort` alone: clips that tie keep their order.
    QList<VideoItem> sorted(QList<VideoItem> videos) const;
    /// Whether one subclip passes. A caller with many takes a `ReviewFilter`.
    bool matches(const Subclip &subclip, const VideoRecord &parent) const;

    /// True if nothing is filtered. The sort and the thumbnails have no part in it.
    bool filtersAreDefault() const;
    /// Takes every filter back; the sort and the thumbnails stay.
    void clearFilters();
};

/// The raw keys of the sort; the labels on the screen are another table.
template <> struct RawValues<ReviewState::Sort> {
    using Sort = ReviewState::Sort;
    static constexpr std::array<std::pair<Sort, std::string_view>, 4> table{{
        {Sort::filename, "filename"},
        {Sort::imported, "imported"},
        {Sort::rating, "rating"},
        {Sort::duration, "duration"},
    }};
};

/// What the filter asks of a clip beside its texts. A list of many clips holds these side by side,
/// so that a look at each needs no look at its record.
struct ClipFlags {
    static ClipFlags of(const VideoRecord &video);

    bool rejected = false;
    bool reviewed = false;
    bool favorite = false;
    bool selectedForExport = false;
    int rating = 0;
};

/// The predicates of a state with its query made ready once, for a walk over many clips. Valid as
/// long as the state it was made of.
class ReviewFilter {
  public:
    explicit ReviewFilter(const ReviewState &state);

    /// A clip is also found by the texts of its subclips.
    bool passes(const VideoRecord &video) const;
    /// A subclip has no rejected and no reviewed state of its own: the parent's count. Unrated, it
    /// counts with the parent's rating. Its siblings' texts aren't searched.
    bool passes(const Subclip &subclip, const VideoRecord &parent) const;

    // The same but for the search, for who holds the texts in a form of its own.
    bool passesUnsearched(const ClipFlags &clip) const;
    bool passesUnsearched(const Subclip &subclip, const VideoRecord &parent) const;
    /// What is searched for, trimmed and in lower case; empty where nothing is.
    const QString &query() const { return m_query; }

  private:
    bool passesFlags(bool rejected, bool reviewed) const;
    bool holdsQuery(const QString &text) const;
    bool holdsQuery(const std::optional<QString> &text) const { return text && holdsQuery(*text); }
    bool clipTextsHoldQuery(const VideoRecord &video) const;

    const ReviewState &m_state;
    QString m_query;
};

} // namespace corvane
