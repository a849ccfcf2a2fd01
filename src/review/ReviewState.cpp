#include "review/ReviewState.h"

#include "platform/TextFormat.h"

#include <algorithm>

namespace corvane {

namespace {

/// Making a name's sort key costs about as much as one comparison of names, and a sort compares
/// each name many times.
void sortByFileName(QList<VideoItem> &videos) {
    struct Entry {
        QCollatorSortKey key;
        VideoItem video;
    };
    const QCollator collator = fileNameCollator();
    std::vector<Entry> entries;
    entries.reserve(size_t(videos.size()));
    for (const VideoItem &video : std::as_const(videos)) {
        entries.push_back({collator.sortKey(video->fileName), video});
    }
    std::ranges::stable_sort(entries, [](const Entry &left, const Entry &right) {
        return left.key.compare(right.key) < 0;
    });
    std::ranges::transform(entries, videos.begin(), &Entry::video);
}

template <typename Member>
void sortLargestFirst(QList<VideoItem> &videos, Member VideoRecord::*key) {
    std::ranges::stable_sort(videos, [key](const VideoItem &left, const VideoItem &right) {
        return (*left).*key > (*right).*key;
    });
}

} // namespace

bool ReviewState::RatingFilter::passes(int rating) const {
    switch (kind) {
    case Kind::off:
        return true;
    case Kind::threshold:
        return rating >= least;
    case Kind::fiveOnly:
        return rating == 5;
    }
    return false;
}

QString ReviewState::normalizedQuery() const {
    return searchQuery.trimmed().toLower();
}

QList<VideoItem> ReviewState::visibleVideos(const QList<VideoItem> &videos) const {
    const ReviewFilter filter(*this);
    QList<VideoItem> visible;
    std::ranges::copy_if(videos, std::back_inserter(visible),
                         [&](const VideoItem &video) { return filter.passes(*video); });
    return visible;
}

QList<VideoItem> ReviewState::sorted(QList<VideoItem> videos) const {
    switch (sort) {
    case Sort::filename:
        sortByFileName(videos);
        break;
    case Sort::imported:
        sortLargestFirst(videos, &VideoRecord::createdAt);
        break;
    case Sort::rating:
        sortLargestFirst(videos, &VideoRecord::rating);
        break;
    case Sort::duration:
        sortLargestFirst(videos, &VideoRecord::durationSeconds);
        break;
    }
    return videos;
}

bool ReviewState::matches(const Subclip &subclip, const VideoRecord &parent) const {
    return ReviewFilter(*this).passes(subclip, parent);
}

bool ReviewState::filtersAreDefault() const {
    return !unreviewedOnly && !favoritesOnly && !selectedOnly && !subclipsView && !includeRejects &&
           ratingFilter.kind == RatingFilter::Kind::off && normalizedQuery().isEmpty();
}

void ReviewState::clearFilters() {
    unreviewedOnly = false;
    favoritesOnly = false;
    selectedOnly = false;
    subclipsView = false;
    includeRejects = false;
    ratingFilter = {};
    searchQuery.clear();
}

ClipFlags ClipFlags::of(const VideoRecord &video) {
    return {.rejected = video.rejected,
            .reviewed = video.reviewed,
            .favorite = video.favorite,
            .selectedForExport = video.selectedForExport,
            .rating = video.rating};
}

ReviewFilter::ReviewFilter(const ReviewState &state)
    : m_state(state), m_query(state.normalizedQuery()) {}

bool ReviewFilter::passesUnsearched(const ClipFlags &clip) const {
    return passesFlags(clip.rejected, clip.reviewed) && (!m_state.favoritesOnly || clip.favorite) &&
           (!m_state.selectedOnly || clip.selectedForExport) &&
           m_state.ratingFilter.passes(clip.rating);
}

bool ReviewFilter::passesUnsearched(const Subclip &subclip, const VideoRecord &parent) const {
    const int effectiveRating = subclip.rating > 0 ? subclip.rating : parent.rating;
    return passesFlags(parent.rejected, parent.reviewed) &&
           (!m_state.favoritesOnly || subclip.favorite) &&
           (!m_state.selectedOnly || subclip.selectedForExport) &&
           m_state.ratingFilter.passes(effectiveRating);
}

bool ReviewFilter::passes(const VideoRecord &video) const {
    if (!passesUnsearched(ClipFlags::of(video))) {
        return false;
    }
    return m_query.isEmpty() || clipTextsHoldQuery(video) ||
           std::ranges::any_of(video.subclips, [this](const Subclip &subclip) {
               return holdsQuery(subclip.label) || holdsQuery(subclip.notes);
           });
}

bool ReviewFilter::passes(const Subclip &subclip, const VideoRecord &parent) const {
    if (!passesUnsearched(subclip, parent)) {
        return false;
    }
    return m_query.isEmpty() || clipTextsHoldQuery(parent) || holdsQuery(subclip.label) ||
           holdsQuery(subclip.notes);
}

bool ReviewFilter::passesFlags(bool rejected, bool reviewed) const {
    return (m_state.includeRejects || !rejected) && (!m_state.unreviewedOnly || !reviewed);
}

bool ReviewFilter::holdsQuery(const QString &text) const {
    return text.toLower().contains(m_query);
}

bool ReviewFilter::clipTextsHoldQuery(const VideoRecord &video) const {
    return holdsQuery(video.fileName) || holdsQuery(video.notes) ||
           std::ranges::any_of(video.tags, [this](const QString &tag) { return holdsQuery(tag); });
}

} // namespace corvane
