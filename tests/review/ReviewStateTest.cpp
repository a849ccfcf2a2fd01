#include "RandomProject.h"
#include "review/list/ClipOrder.h"
#include "review/list/ReviewListing.h"

#include <gtest/gtest.h>

namespace corvane {

namespace {

using namespace test;

Project makeProject(const QList<VideoItem> &videos) {
    Project project;
    project.videos = videos;
    return project;
}

/// The rows that a state shows, as the side pane and the command line compute them.
struct ShownRows {
    ShownRows(const ReviewState &state, const Project &project) {
        ReviewIndex index;
        index.update(project.videos);
        ClipOrder order;
        const std::vector<int> clips = order.order(state, index);
        const ReviewListing listing(state, index);
        for (const MixedSidebarRow &row : listing.shownRows(clips)) {
            const auto subclip = row.subclip ? std::optional(row.subclip->id) : std::nullopt;
            identities.append(SidebarRowId{row.video->id, subclip}.identity());
        }
        visibleCount = listing.rows(clips).visibleCount;
        totalCount = listing.totalCount();
    }

    QStringList identities;
    qsizetype visibleCount = 0;
    qsizetype totalCount = 0;
};

/// A second implementation of the filter, which checks every condition on the records.
class FilterOracle {
  public:
    explicit FilterOracle(const ReviewState &state) : m_state(state) {}

    QStringList shown(const Project &project) const {
        QStringList rows;
        for (const VideoItem &video : project.videos) {
            if (!m_state.subclipsView && listsClip(*video)) {
                rows.append(QStringLiteral("clip-") + video->id);
            }
            if (m_state.subclipsView || m_state.selectedOnly) {
                appendSubclips(rows, *video);
            }
        }
        return rows;
    }

  private:
    bool finds(QStringList texts) const {
        const QString query = m_state.searchQuery.trimmed().toLower();
        if (query.isEmpty()) {
            return true;
        }
        for (const QString &text : texts) {
            if (text.toLower().indexOf(query) >= 0) {
                return true;
            }
        }
        return false;
    }

    bool rates(int rating) const {
        using Kind = ReviewState::RatingFilter::Kind;
        if (m_state.ratingFilter.kind == Kind::fiveOnly) {
            return rating == 5;
        }
        return m_state.ratingFilter.kind == Kind::off || rating >= m_state.ratingFilter.least;
    }

    QStringList texts(const VideoRecord &video) const {
        return QStringList{video.fileName, video.notes.value_or(QString())} + video.tags;
    }

    bool listsClip(const VideoRecord &video) const {
        QStringList all = texts(video);
        for (const Subclip &subclip : video.subclips) {
            all << subclip.label.value_or(QString()) << subclip.notes.value_or(QString());
        }
        return !(video.rejected && !m_state.includeRejects) &&
               !(video.reviewed && m_state.unreviewedOnly) &&
               !(!video.favorite && m_state.favoritesOnly) &&
               !(!video.selectedForExport && m_state.selectedOnly) && rates(video.rating) &&
               finds(all);
    }

    bool listsSubclip(const Subclip &subclip, const VideoRecord &video) const {
        const QStringList all = texts(video) << subclip.label.value_or(QString())
                                             << subclip.notes.value_or(QString());
        return !(video.rejected && !m_state.includeRejects) &&
               !(video.reviewed && m_state.unreviewedOnly) &&
               !(!subclip.favorite && m_state.favoritesOnly) &&
               !(!subclip.selectedForExport && m_state.selectedOnly) &&
               rates(subclip.rating > 0 ? subclip.rating : video.rating) && finds(all);
    }

    void appendSubclips(QStringList &rows, const VideoRecord &video) const {
        for (int index = 0; index < 3; ++index) {
            for (const Subclip &subclip : video.subclips) {
                if (subclip.creationIndex == index && listsSubclip(subclip, video)) {
                    rows.append(QStringLiteral("sub-") + subclip.id);
                }
            }
        }
    }

    const ReviewState &m_state;
};

} // namespace

TEST(ReviewState, ListsTheRowsThatPassEveryCondition) {
    for (quint32 seed = 1; seed <= 3000; ++seed) {
        RandomProject random(seed);
        const Project project = random.make();
        ReviewState state = random.state();
        const QStringList expected = FilterOracle(state).shown(project);
        state.sort = ReviewState::Sort::duration; // equal for all clips, which keeps their order
        const ShownRows shown(state, project);
        ASSERT_EQ(shown.identities, expected) << "seed " << seed;
        EXPECT_EQ(shown.visibleCount, expected.size());
    }
}

TEST(ReviewState, SortsClipsByOneKeyAndKeepsProjectOrderOnTies) {
    VideoRecord ten = makeVideo(QStringLiteral("1"), QStringLiteral("clip10.mov"));
    VideoRecord two = makeVideo(QStringLiteral("2"), QStringLiteral("Clip2.mov"));
    VideoRecord one = makeVideo(QStringLiteral("3"), QStringLiteral("clip1.mov"));
    ten.rating = one.rating = 3;
    two.rating = 4;
    ten.durationSeconds = 0.5;
    one.durationSeconds = 7;
    ten.createdAt = QDateTime::fromMSecsSinceEpoch(2, Qt::UTC);
    two.createdAt = QDateTime::fromMSecsSinceEpoch(3, Qt::UTC);
    one.createdAt = QDateTime::fromMSecsSinceEpoch(1, Qt::UTC);
    const Project project = makeProject({ten, two, one});

    const auto order = [&](ReviewState::Sort sort) {
        ReviewState state;
        state.sort = sort;
        const ShownRows shown(state, project);
        return shown.identities.join(QLatin1Char(' ')).remove(QStringLiteral("clip-"));
    };
    using Sort = ReviewState::Sort;
    EXPECT_EQ(order(Sort::filename), QStringLiteral("3 2 1"));
    EXPECT_EQ(order(Sort::imported), QStringLiteral("2 1 3"));
    EXPECT_EQ(order(Sort::rating), QStringLiteral("2 1 3"));
    EXPECT_EQ(order(Sort::duration), QStringLiteral("3 1 2"));
}

TEST(ReviewState, ReportsDefaultFiltersBeforeFilteringAndAfterClearing) {
    ReviewState state;
    state.searchQuery = QStringLiteral(" \n\t");
    state.sort = ReviewState::Sort::rating;
    state.useLargeThumbnails = true;
    EXPECT_TRUE(state.filtersAreDefault());

    const ReviewState unfiltered{.sort = state.sort, .useLargeThumbnails = true};
    const ReviewState filtered[] = {
        {.unreviewedOnly = true},
        {.favoritesOnly = true},
        {.selectedOnly = true},
        {.subclipsView = true},
        {.includeRejects = true},
        {.ratingFilter = ReviewState::RatingFilter::threshold(1)},
        {.searchQuery = QStringLiteral("x")},
    };
    for (ReviewState one : filtered) {
        EXPECT_FALSE(one.filtersAreDefault());
        one.sort = state.sort;
        one.useLargeThumbnails = true;
        one.clearFilters();
        EXPECT_EQ(one, unfiltered);
    }
}

TEST(ReviewState, CountsTheRowsOfEachList) {
    VideoRecord clip = makeVideo(QStringLiteral("A"), QStringLiteral("a.mov"));
    clip.subclips = {makeSubclip(QStringLiteral("A2"), 2), makeSubclip(QStringLiteral("A1"), 1)};
    const Project project = makeProject({clip, clip});
    EXPECT_EQ(ShownRows({}, project).totalCount, 2);
    EXPECT_EQ(ShownRows({.selectedOnly = true}, project).totalCount, 6);
    EXPECT_EQ(ShownRows({.selectedOnly = true, .subclipsView = true}, project).totalCount, 4);

    const ReviewState state;
    EXPECT_EQ(state.countLabel(0, 0), QStringLiteral("No clips yet"));
    EXPECT_EQ(state.countLabel(1, 1), QStringLiteral("1 clip"));
    EXPECT_EQ(state.countLabel(2, 2), QStringLiteral("2 clips"));
    EXPECT_EQ(ReviewState{.favoritesOnly = true}.countLabel(0, 2),
              QStringLiteral("0 of 2 visible"));
}

} // namespace corvane
