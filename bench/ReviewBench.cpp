// The review's list in a large project: a keystroke in the search field, another sort, one edit.
// For comparison, "theirs" converts every text to lower case and searches it.

#include "BenchData.h"

#include "platform/Tasks.h"
#include "review/PlayerEngine.h"
#include "review/ReviewScreenState.h"
#include "session/ProjectPresence.h"
#include "shell/AppCommands.h"
#include "shell/ProjectHeader.h"

#include <benchmark/benchmark.h>

using namespace corvane;
using namespace corvane::bench;

namespace {

/// 25,000 clips and 100,000 subclips, each with a note.
const Project &reviewProject() {
    static const Project project = [] {
        Project result = largeProject(25'000);
        for (VideoItem &video : result.videos) {
            VideoRecord &record = video.edit();
            record.subclips.removeLast();
            for (Subclip &subclip : record.subclips) {
                subclip.notes = QStringLiteral("Wind on the left channel, gulls from %1 s on.")
                                    .arg(subclip.inSeconds);
            }
        }
        return result;
    }();
    return project;
}

bool containsTerm(const QString &text, const QString &query) {
    return text.toLower().contains(query);
}

bool clipContains(const VideoRecord &video, const QString &query) {
    const auto containsAny = [&](const Subclip &subclip) {
        return containsTerm(subclip.label.value_or(QString()), query) ||
               containsTerm(subclip.notes.value_or(QString()), query);
    };
    return containsTerm(video.fileName, query) ||
           containsTerm(video.notes.value_or(QString()), query) ||
           std::ranges::any_of(video.tags,
                               [&](const QString &tag) { return containsTerm(tag, query); }) ||
           std::ranges::any_of(video.subclips, containsAny);
}

void searchNaively(benchmark::State &state, const QString &query) {
    const Project &project = reviewProject();
    for (auto _ : state) {
        QList<VideoItem> found;
        for (const VideoItem &video : project.videos) {
            if (clipContains(*video, query)) {
                found.append(video);
            }
        }
        benchmark::DoNotOptimize(found.size());
    }
}

/// From the unfiltered list to the matches, including the counts.
void searchList(benchmark::State &state, const QString &query) {
    ReviewListModel model;
    model.setProject(&reviewProject());
    for (auto _ : state) {
        model.setState({.searchQuery = query});
        benchmark::DoNotOptimize(model.visibleCount() + model.totalCount());
        state.PauseTiming();
        model.setState({});
        state.ResumeTiming();
    }
}

/// The first use of a sort.
void sortList(benchmark::State &state, ReviewState::Sort sort) {
    const auto other = sort == ReviewState::Sort::filename ? ReviewState::Sort::rating
                                                           : ReviewState::Sort::filename;
    for (auto _ : state) {
        state.PauseTiming();
        {
            ReviewListModel model;
            model.setState({.sort = other});
            model.setProject(&reviewProject());
            state.ResumeTiming();
            model.setState({.sort = sort});
            benchmark::DoNotOptimize(model.visibleCount());
            state.PauseTiming();
        }
        state.ResumeTiming();
    }
}

void openList(benchmark::State &state) {
    for (auto _ : state) {
        ReviewListModel model;
        model.setProject(&reviewProject());
        benchmark::DoNotOptimize(model.visibleCount());
    }
}

/// From the edit to the last update of the review, the header and the menus.
void starOneRow(benchmark::State &state) {
    ProjectFileIO io;
    ProjectRegistry registry{dataPath(QStringLiteral("review"))};
    BackupService backups;
    MediaSourceAuthorization authorization{dataPath(QStringLiteral("review"))};
    ProjectStore store{io, registry, backups, authorization};
    const QString file = dataPath(QStringLiteral("review/empty.corvane"));
    Project empty = reviewProject();
    empty.videos.clear();
    waitUntilDone(io.save(empty, file, true));
    waitUntilDone(store.openProject(file));
    store.updateProject(reviewProject());
    PlayerEngine player({});
    ReviewScreenState review(store, player);
    ProjectPresence presence(store);
    const ProjectHeader header(store, presence);
    AppRequests requests;
    UpdaterController updater({});
    const AppCommands commands(store, updater, requests);
    int reports = 0;
    QObject::connect(review.list(), &QAbstractItemModel::dataChanged, [&reports] { ++reports; });
    const QString id = store.project()->videos.at(12'500)->id;
    int rating = 0;
    for (auto _ : state) {
        store.setRating(id, ++rating % 6);
    }
    if (reports != state.iterations()) {
        state.SkipWithError("an edit must report one row");
    }
}

const QString kNoMatch = QStringLiteral("zebra");
const QString kAllMatch = QStringLiteral("pier");
const QString kPairsOnly = QStringLiteral("left gulls take");

BENCHMARK_CAPTURE(searchList, nothing, kNoMatch)
    ->Name("search-nothing/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchNaively, nothing, kNoMatch)
    ->Name("search-nothing/theirs")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchList, everyPair, kPairsOnly)
    ->Name("search-misleading/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchNaively, everyPair, kPairsOnly)
    ->Name("search-misleading/theirs")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchList, everything, kAllMatch)
    ->Name("search-everything/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchNaively, everything, kAllMatch)
    ->Name("search-everything/theirs")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(searchList, some, QStringLiteral("möwe 7"))
    ->Name("search-some/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sortList, name, ReviewState::Sort::filename)
    ->Name("sort-by-name/ours")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK_CAPTURE(sortList, rating, ReviewState::Sort::rating)
    ->Name("sort-by-rating/ours")
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);
BENCHMARK(openList)->Name("open-list/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(starOneRow)->Name("star/ours")->Unit(benchmark::kMicrosecond);

} // namespace
