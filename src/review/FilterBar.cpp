#include "review/FilterBar.h"

#include <algorithm>

namespace corvane {

namespace {

using Chip = FilterBar::Chip;
using RatingFilter = ReviewState::RatingFilter;

struct ChipInfo {
    Chip chip;
    const char *title;
    bool ReviewState::*flag; ///< toggled by the chip; nullptr for "All"
};

constexpr ChipInfo kChips[] = {
    {Chip::all, "All", nullptr},
    {Chip::unreviewed, "Unreviewed", &ReviewState::unreviewedOnly},
    {Chip::favorites, "Favorites", &ReviewState::favoritesOnly},
    {Chip::selected, "Selected", &ReviewState::selectedOnly},
    {Chip::subclips, "Subclips", &ReviewState::subclipsView},
    {Chip::showRejects, "Show rejects", &ReviewState::includeRejects},
};

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
    if (filter->kind == RatingFilter::Kind::off) {
        return QStringLiteral("Off");
    }
    const QString label = FilterBar::label(*filter);
    return filter->kind == RatingFilter::Kind::fiveOnly ? label + QStringLiteral(" only") : label;
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

QVariantList FilterBar::chips() const {
    QVariantList chips;
    for (const auto &[chip, title, flag] : kChips) {
        const bool isActive = flag ? m_state.*flag : m_state.filtersAreDefault();
        chips.append(QVariantMap{{QStringLiteral("chip"), QVariant::fromValue(chip)},
                                 {QStringLiteral("title"), QString::fromUtf8(title)},
                                 {QStringLiteral("isActive"), isActive}});
    }
    return chips;
}

void FilterBar::click(Chip chip) {
    ReviewState state = m_state;
    if (const auto flag = std::ranges::find(kChips, chip, &ChipInfo::chip)->flag) {
        state.*flag = !(state.*flag);
    } else {
        state.clearFilters();
    }
    setState(state);
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
        set(&ReviewState::ratingFilter, *filter);
    }
}

QString FilterBar::sortLabel() const {
    return QStringLiteral("Sort: %1").arg(label(m_state.sort));
}

QVariantList FilterBar::sortItems() const {
    QVariantList items;
    for (const auto &[sort, key] : rawValues<ReviewState::Sort>) {
        items.append(QVariantMap{{QStringLiteral("title"), label(sort)},
                                 {QStringLiteral("isCurrent"), sort == m_state.sort}});
    }
    return items;
}

void FilterBar::chooseSort(int item) {
    const auto &sorts = rawValues<ReviewState::Sort>;
    if (item >= 0 && size_t(item) < sorts.size()) {
        set(&ReviewState::sort, sorts[size_t(item)].first);
    }
}

QString FilterBar::countLabel() const {
    return m_state.countLabel(m_visible, m_total);
}

} // namespace corvane
