#include "review/list/ReviewState.h"

#include "platform/TextFormat.h"

namespace corvane {

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

ReviewState::ShownList ReviewState::shownList() const {
    if (subclipsView) {
        return ShownList::visibleSubclips;
    }
    return selectedOnly ? ShownList::mixedRows : ShownList::visibleVideos;
}

QString ReviewState::normalizedQuery() const {
    return searchQuery.trimmed().toLower();
}

bool ReviewState::filtersAreDefault() const {
    return !unreviewedOnly && !favoritesOnly && !selectedOnly && !subclipsView && !includeRejects &&
           ratingFilter.kind == RatingFilter::Kind::off && normalizedQuery().isEmpty();
}

void ReviewState::clearFilters() {
    *this = {.sort = sort, .useLargeThumbnails = useLargeThumbnails};
}

QString ReviewState::countLabel(qsizetype visible, qsizetype total) const {
    if (total == 0) {
        return QStringLiteral("No clips yet");
    }
    return filtersAreDefault() ? counted(total, QStringLiteral("clip"))
                               : QStringLiteral("%1 of %2 visible").arg(visible).arg(total);
}

ClipFlags ClipFlags::of(const VideoRecord &video) {
    return {.rejected = video.rejected,
            .reviewed = video.reviewed,
            .favorite = video.favorite,
            .selectedForExport = video.selectedForExport,
            .rating = video.rating};
}

bool ReviewFilter::passes(const ClipFlags &clip) const {
    return passesClipConditions(clip) && (!m_state.favoritesOnly || clip.favorite) &&
           (!m_state.selectedOnly || clip.selectedForExport) &&
           m_state.ratingFilter.passes(clip.rating);
}

bool ReviewFilter::passes(const Subclip &subclip, const ClipFlags &clip) const {
    return passesClipConditions(clip) && (!m_state.favoritesOnly || subclip.favorite) &&
           (!m_state.selectedOnly || subclip.selectedForExport) &&
           m_state.ratingFilter.passes(subclip.rating > 0 ? subclip.rating : clip.rating);
}

bool ReviewFilter::passesClipConditions(const ClipFlags &clip) const {
    return (m_state.includeRejects || !clip.rejected) &&
           (!m_state.unreviewedOnly || !clip.reviewed);
}

} // namespace corvane
