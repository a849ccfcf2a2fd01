#include "review/FilterBar.h"

namespace corvane {

namespace {

using Chip = FilterBar::Chip;
using RatingFilter = ReviewState::RatingFilter;

struct ChipText {
    Chip chip;
    const char *title;
};

constexpr ChipText kChips[] = {
    {Chip::all, "All"},
    {Chip::unreviewed, "Unreviewed"},
    {Chip::favorites, "Favorites"},
    {Chip::selected, "Selected"},
    {Chip::subclips, "Subclips"},
    {Chip::showRejects, "Show rejects"},
};

/// The flag that a chip toggles; nullptr for "All".
bool *flagOf(ReviewState &state, Chip chip) {
    switch (chip) {
    case Chip::all:
        break;
    case Chip::unreviewed:
        return &state.unreviewedOnly;
    case Chip::favorites:
        return &state.favoritesOnly;
    case Chip::selected:
        return &state.selectedOnly;
    case Chip::subclips:
        return &state.subclipsView;
    case Chip::showRejects:
        return &state.includeRejects;
    }
    return nullptr;
}

/// The items of the rating menu; nullopt is the divider.
const QList<std::optional<RatingFilter>> &ratingFilters() {
    static const QList<std::optional<RatingFilter>> filters{RatingFilter(),
                                                            std::nullopt,
                                                            RatingFilter::threshold(1),
                                                            RatingFilter::threshold(2),
                                                            RatingFilter::threshold(3),
                                                            RatingFilter::threshold(4),
                                                            RatingFilter::fiveOnly()};
    return filters;
}

QString ratingItemTitle(const std::optional<RatingFilter> &filter) {
    if (!filter) {
        return {};
    }
    switch (filter->kind) {
    case RatingFilter::Kind::off:
        return QStringLiteral("Off");
    case RatingFilter::Kind::threshold:
        return FilterBar::label(*filter);
    case RatingFilter::Kind::fiveOnly:
        return QStringLiteral("5★ only");
    }
    return {};
}

} // namespace

QString FilterBar::label(ReviewState::Sort sort) {
    switch (sort) {
    case ReviewState::Sort::filename:
        return QStringLiteral("Filename");
    case ReviewState::Sort::imported:
        return QStringLiteral("Imported");
    case ReviewState::Sort::rating:
        return QStringLiteral("Rating");
    case ReviewState::Sort::duration:
        return QStringLiteral("Duration");
    }
    return {};
}

QString FilterBar::label(const RatingFilter &filter) {
    switch (filter.kind) {
    case RatingFilter::Kind::off:
        return QStringLiteral("Rating");
    case RatingFilter::Kind::threshold:
        return QStringLiteral("%1★+").arg(filter.least);
    case RatingFilter::Kind::fiveOnly:
        return QStringLiteral("5★");
    }
    return {};
}

void FilterBar::setState(const ReviewState &state) {
    if (m_state != state) {
        m_state = state;
        Q_EMIT stateChanged();
        publishCounts();
    }
}

void FilterBar::setCounts(qsizetype visible, qsizetype total) {
    m_visible = visible;
    m_total = total;
    publishCounts();
}

void FilterBar::publishCounts() {
    const std::pair counts(countLabel(), hasBulkActions());
    if (std::exchange(m_publishedCounts, counts) != counts) {
        Q_EMIT countsChanged();
    }
}

bool FilterBar::isActive(Chip chip) const {
    ReviewState state = m_state;
    const bool *flag = flagOf(state, chip);
    return flag ? *flag : m_state.filtersAreDefault();
}

QVariantList FilterBar::chips() const {
    QVariantList chips;
    for (const ChipText &text : kChips) {
        chips.append(QVariantMap{{QStringLiteral("chip"), QVariant::fromValue(text.chip)},
                                 {QStringLiteral("title"), QString::fromUtf8(text.title)},
                                 {QStringLiteral("isActive"), isActive(text.chip)}});
    }
    return chips;
}

void FilterBar::click(Chip chip) {
    ReviewState state = m_state;
    if (bool *flag = flagOf(state, chip)) {
        *flag = !*flag;
    } else {
        state.clearFilters();
    }
    setState(state);
}

void FilterBar::clearFilters() {
    click(Chip::all);
}

bool FilterBar::ratingIsActive() const {
    return m_state.ratingFilter.kind != RatingFilter::Kind::off;
}

QVariantList FilterBar::ratingItems() const {
    QVariantList items;
    for (const auto &filter : ratingFilters()) {
        items.append(QVariantMap{{QStringLiteral("title"), ratingItemTitle(filter)},
                                 {QStringLiteral("isCurrent"), filter == m_state.ratingFilter},
                                 {QStringLiteral("isDivider"), !filter}});
    }
    return items;
}

void FilterBar::chooseRating(int item) {
    if (const auto filter = ratingFilters().value(item)) {
        ReviewState state = m_state;
        state.ratingFilter = *filter;
        setState(state);
    }
}

void FilterBar::setSearchQuery(const QString &text) {
    ReviewState state = m_state;
    state.searchQuery = text;
    setState(state);
}

QString FilterBar::sortLabel() const {
    return QStringLiteral("Sort: %1").arg(label(m_state.sort));
}

QVariantList FilterBar::sortItems() const {
    QVariantList items;
    for (const auto &[sort, key] : RawValues<ReviewState::Sort>::table) {
        items.append(QVariantMap{{QStringLiteral("title"), label(sort)},
                                 {QStringLiteral("isCurrent"), sort == m_state.sort}});
    }
    return items;
}

void FilterBar::chooseSort(int item) {
    const auto &sorts = RawValues<ReviewState::Sort>::table;
    if (item >= 0 && size_t(item) < sorts.size()) {
        ReviewState state = m_state;
        state.sort = sorts[size_t(item)].first;
        setState(state);
    }
}

void FilterBar::setUseLargeThumbnails(bool use) {
    ReviewState state = m_state;
    state.useLargeThumbnails = use;
    setState(state);
}

QString FilterBar::countLabel() const {
    return m_state.countLabel(m_visible, m_total);
}

} // namespace corvane
