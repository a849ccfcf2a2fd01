#include "RandomProject.h"
#include "review/ReviewLists.h"

#include <gtest/gtest.h>

namespace corvane {

namespace {

using namespace test;

Project makeProject(const QList<VideoItem> &videos) {
    Project project;
    project.videos = videos;
    return project;
}

QStringList identities(const QList<MixedSidebarRow> &rows) {
    QStringList texts;
    for (const MixedSidebarRow &row : rows) {
        texts.append(row.identity());
    }
    return texts;
}

QStringList shown(const ReviewState &state, const Project &project) {
    return identities(ReviewLists::shownRows(state, project));
}

/// The filter once more, one condition after another, with nothing prepared ahead.
class PlainReading {
  public:
    explicit PlainReading(const ReviewState &state) : m_state(state) {}

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

TEST(ReviewState, ShowsWhatAPlainReadingOfTheConditionsShows) {
    for (quint32 seed = 1; seed <= 3000; ++seed) {
        RandomProject random(seed);
        const Project project = random.make();
        ReviewState state = random.state();
        const QStringList expected = PlainReading(state).shown(project);
        // Nothing to sort by: all clips tie and stay in project order.
        state.sort = ReviewState::Sort::duration;
        ASSERT_EQ(shown(state, project), expected) << "seed " << seed;
        EXPECT_EQ(ReviewLists::visibleCount(state, project), expected.size());
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
        return shown(state, project).join(QLatin1Char(' ')).remove(QStringLiteral("clip-"));
    };
    using Sort = ReviewState::Sort;
    EXPECT_EQ(order(Sort::filename), QStringLiteral("3 2 1"));
    EXPECT_EQ(order(Sort::imported), QStringLiteral("2 1 3"));
    EXPECT_EQ(order(Sort::rating), QStringLiteral("2 1 3"));
    EXPECT_EQ(order(Sort::duration), QStringLiteral("3 1 2"));
}

TEST(ReviewState, IsDefaultUntilSomethingIsFilteredAndAgainOnceCleared) {
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

TEST(ReviewLists, OrdersTheRowsOfEachViewAsTheyAreDisplayed) {
    VideoRecord second = makeVideo(QStringLiteral("B"), QStringLiteral("b.mov"));
    VideoRecord first = makeVideo(QStringLiteral("A"), QStringLiteral("a.mov"));
    second.subclips = {makeSubclip(QStringLiteral("B2"), 2), makeSubclip(QStringLiteral("B1"), 1)};
    second.subclips.first().selectedForExport = true;
    first.selectedForExport = true;
    const Project project = makeProject({second, first});
    const auto order = [&](const ReviewState &state) {
        QStringList texts;
        const QList<SidebarRowId> ids = ReviewLists::orderedRowIds(state, project);
        for (const SidebarRowId &id : ids) {
            texts.append(id.subclipId.value_or(id.videoId));
        }
        return texts.join(QLatin1Char(' '));
    };

    ReviewState state;
    EXPECT_EQ(order(state), QStringLiteral("A B B1 B2"));
    state.selectedOnly = true;
    EXPECT_EQ(order(state), QStringLiteral("B2 A"));
    EXPECT_EQ(ReviewLists::totalCount(state, project), 4);
    state.subclipsView = true;
    EXPECT_EQ(order(state), QStringLiteral("B2"));
    EXPECT_EQ(ReviewLists::totalCount(state, project), 2);
}

TEST(ReviewLists, LabelsTheCounts) {
    ReviewState state;
    EXPECT_EQ(ReviewLists::countLabel(state, 0, 0), QStringLiteral("No clips yet"));
    EXPECT_EQ(ReviewLists::countLabel(state, 1, 1), QStringLiteral("1 clip"));
    EXPECT_EQ(ReviewLists::countLabel(state, 2, 2), QStringLiteral("2 clips"));
    state.favoritesOnly = true;
    EXPECT_EQ(ReviewLists::countLabel(state, 0, 2), QStringLiteral("0 of 2 visible"));
}

} // namespace corvane
