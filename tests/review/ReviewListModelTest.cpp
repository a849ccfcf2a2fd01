#include "review/ReviewListModel.h"
#include "RandomProject.h"
#include "support/ModelMirror.h"
#include "support/SampleProject.h"

namespace corvane {

namespace {

/// A view of the ids of the clips and subclips.
struct MirrorView : test::ModelMirror<QString> {
    explicit MirrorView(const ReviewListModel &model)
        : ModelMirror(model, [&model](int row) {
              const SidebarRowId id = model.rowId(row);
              return id.subclipId.value_or(id.videoId);
          }) {}
};

} // namespace

TEST(ReviewListModel, ShowsTheSameRowsAfterAnyChangesAsANewModel) {
    for (quint32 seed = 1; seed <= 400; ++seed) {
        test::RandomProject random(seed);
        Project project = random.make();
        ReviewState state;
        ReviewListModel model;
        MirrorView view(model);
        for (int step = 0; step < 12; ++step) {
            for (int changes = step % 3; changes >= 0; --changes) {
                random.change(project);
            }
            model.setProject(&project);
            if (step % 3 == 2) {
                state = random.state();
                state.sort = ReviewState::Sort(seed % 4);
                model.setState(state);
            }
            ReviewListModel fresh;
            fresh.setState(state);
            fresh.setProject(&project);
            ASSERT_EQ(model.orderedRowIds(), fresh.orderedRowIds())
                << "seed " << seed << " step " << step;
            ASSERT_EQ(view.rows, view.shown());
            EXPECT_EQ(model.visibleCount(), fresh.visibleCount());
            EXPECT_EQ(model.totalCount(), fresh.totalCount());
        }
    }
}

TEST(ReviewListModel, ReportsOnlyTheRowOfAnEditedClip) {
    Project project = test::sampleProject(20, 2);
    ReviewListModel model;
    model.setProject(&project);
    MirrorView view(model);
    project.videos[7].edit().favorite = true;
    model.setProject(&project);
    EXPECT_EQ(view.changedRows, QStringList{QStringLiteral("clip-7")});
    view.changedRows.clear();
    project.videos[7].edit().subclips[1].label = QStringLiteral("Wide");
    model.setProject(&project);
    EXPECT_EQ(view.changedRows, QStringList{QStringLiteral("clip-7-sub-1")});
    EXPECT_EQ(model.data(model.index(model.rowCount() - 1), ReviewListModel::NameRole),
              QStringLiteral("Subclip 2"));

    view.changedRows.clear();
    project.videos.removeLast();
    project.videos[3].edit().favorite = true;
    model.setProject(&project);
    EXPECT_TRUE(view.changedRows.contains(QStringLiteral("clip-3")))
        << "also if another clip is removed at the same time";

    view.changedRows.clear();
    model.setState({.sort = ReviewState::Sort::rating});
    project.videos[7].edit().rating = 3;
    model.setProject(&project);
    EXPECT_EQ(view.moves, 1) << "one move of the clip with its subclips";
    EXPECT_EQ(view.changedRows, QStringList{QStringLiteral("clip-7")});
    EXPECT_EQ(view.rows.mid(0, 3).last(), QStringLiteral("clip-7-sub-1"));
    EXPECT_EQ(view.rows, view.shown());
}

TEST(ReviewListModel, DescribesRowsInWordsAndReportsWhichSubclipsAreInline) {
    Project project = test::sampleProject(2, 1);
    VideoRecord &video = project.videos[0].edit();
    video.durationSeconds = 65;
    video.rating = 1;
    video.favorite = video.selectedForExport = video.reviewed = video.rejected = true;
    video.hdPath = QStringLiteral("/hd.mov");
    ReviewListModel model;
    model.setState({.includeRejects = true});
    model.setProject(&project);
    const auto text = [&](int row, int role) {
        return model.data(model.index(row), role).toString();
    };
    EXPECT_EQ(text(0, ReviewListModel::DetailsRole), QStringLiteral("1:05 · 1 subclip"));
    EXPECT_EQ(text(0, ReviewListModel::DescriptionRole),
              QStringLiteral("1:05, 1 subclip, 1 star, favorite, selected for export, reviewed, "
                             "rejected, HD"));
    EXPECT_EQ(text(1, ReviewListModel::DescriptionRole), text(1, ReviewListModel::TimeRole));
    EXPECT_EQ(model.clipRowFrom(1), 2);
    EXPECT_EQ(model.clipRowFrom(3), 3) << "only a subclip follows";

    int inlineReports = 0;
    QObject::connect(&model, &QAbstractItemModel::dataChanged,
                     [&](const auto &, const auto &, const QList<int> &roles) {
                         inlineReports += roles.contains(ReviewListModel::IsInlineRole);
                     });
    model.setState({.subclipsView = true, .includeRejects = true});
    EXPECT_EQ(inlineReports, 1) << "for subclips in both lists";
}

TEST(ReviewListModel, ListsInlineSubclipsInCreationOrderBelowSortedClips) {
    VideoRecord second = test::makeVideo(QStringLiteral("B"), QStringLiteral("b.mov"));
    VideoRecord first = test::makeVideo(QStringLiteral("A"), QStringLiteral("a.mov"));
    second.subclips = {test::makeSubclip(QStringLiteral("B2"), 2),
                       test::makeSubclip(QStringLiteral("B1"), 1)};
    second.subclips.first().selectedForExport = true;
    first.selectedForExport = true;
    Project project;
    project.videos = {second, first};
    ReviewListModel model;
    const MirrorView view(model);
    model.setProject(&project);
    const auto shown = [&](const ReviewState &state) {
        model.setState(state);
        return view.rows.join(QLatin1Char(' '));
    };
    EXPECT_EQ(shown({}), QStringLiteral("A B B1 B2"));
    EXPECT_EQ(shown({.selectedOnly = true}), QStringLiteral("B2 A"));
    EXPECT_EQ(shown({.selectedOnly = true, .subclipsView = true}), QStringLiteral("B2"));
}

} // namespace corvane
