// Hashes, copies, scans and plans footage, compared with the commands that a user would otherwise
// run.

#include "BenchData.h"

#include "delivery/export/ExportPlanning.h"
#include "import/SourceScan.h"
#include "platform/AtomicWrite.h"
#include "transfer/ImportCopier.h"
#include "trust/ContentHasher.h"
#include "trust/PathSafety.h"

#include <benchmark/benchmark.h>

#include <cstdlib>

using namespace corvane;
using namespace corvane::bench;

namespace {

constexpr qint64 kLargeFile = qint64(2) << 30;

QString footage() {
    return largeFile(QStringLiteral("footage.mov"), kLargeFile);
}

void readIntoPageCache(const QString &path) {
    runCommand(QStringLiteral("cat '%1' > /dev/null").arg(path));
}

void anchorOurs(benchmark::State &state) {
    const QString path = footage();
    readIntoPageCache(path);
    for (auto _ : state) {
        benchmark::DoNotOptimize(ContentHasher::makeAnchor(path));
    }
}

void anchorTheirs(benchmark::State &state) {
    const QString path = footage();
    readIntoPageCache(path);
    for (auto _ : state) {
        runCommand(QStringLiteral("openssl dgst -sha256 '%1' > /dev/null").arg(path));
    }
}

void removeCopy(const QString &path) {
    runCommand(QStringLiteral("rm -f '%1'; sync").arg(path));
}

void copyOurs(benchmark::State &state) {
    const QString path = footage();
    const QString copy = dataPath(QStringLiteral("copy/footage.mov"));
    RootIdentity identity = *PathSafety::folderIdentity(dataFolder());
    identity.contentHash = ContentHasher::makeAnchor(path);
    fileSystem().createFolders(dataPath(QStringLiteral("copy")));
    for (auto _ : state) {
        state.PauseTiming();
        removeCopy(copy);
        state.ResumeTiming();
        const OpenFolder folder = OpenFolder::at(dataPath(QStringLiteral("copy")));
        ImportCopier::copy(path, {folder, QStringLiteral("footage.mov")},
                           ImportCopier::SourceRoot{dataFolder(), identity}, {}, {});
    }
    removeCopy(copy);
}

/// In `command`, %1 is the source and %2 the copy.
void copyByCommand(benchmark::State &state, const QString &command) {
    const QString path = footage();
    const QString copy = dataPath(QStringLiteral("copy/footage.mov"));
    fileSystem().createFolders(dataPath(QStringLiteral("copy")));
    for (auto _ : state) {
        state.PauseTiming();
        removeCopy(copy);
        state.ResumeTiming();
        runCommand(command.arg(path, copy));
    }
    removeCopy(copy);
}

void copyAndHashTheirs(benchmark::State &state) {
    copyByCommand(state, QStringLiteral("cp '%1' '%2' && openssl dgst -sha256 '%2' > /dev/null"));
}

void copyAndSyncTheirs(benchmark::State &state) {
    copyByCommand(state, QStringLiteral("cp '%1' '%2' && sync '%2'"));
}

/// A folder with 20,000 empty files named like clips, spread over subfolders.
QString clipTree(const QString &name, int folders) {
    const QString root = dataPath(name);
    if (fileSystem().linkStatus(root)) {
        return root;
    }
    constexpr int kFiles = 20'000;
    for (int folder = 0; folder < folders; ++folder) {
        fileSystem().createFolders(QStringLiteral("%1/%2").arg(root).arg(folder));
    }
    for (int file = 0; file < kFiles; ++file) {
        const OpenFolder folder =
            OpenFolder::at(QStringLiteral("%1/%2").arg(root).arg(file % folders));
        fileSystem().createFileAt(folder.descriptor(), QStringLiteral("C%1.MP4").arg(file));
    }
    return root;
}

void scanOurs(benchmark::State &state, const QString &name, int folders) {
    const QString root = clipTree(name, folders);
    for (auto _ : state) {
        const auto result = scan({root}, true, {});
        if (result.videos.size() != 20'000) {
            state.SkipWithError("a scan lost files");
        }
    }
}

void scanTheirs(benchmark::State &state, const QString &name, int folders) {
    const QString root = clipTree(name, folders);
    for (auto _ : state) {
        runCommand(QStringLiteral("find '%1' -type f -printf '%p %s\\n' > /dev/null").arg(root));
    }
}

/// Plans an export of 10,000 selected clips that all have the same name, or a name each.
void plan(benchmark::State &state, bool sameName) {
    Project project = largeProject(10'000);
    for (VideoItem &video : project.videos) {
        video.edit().selectedForExport = true;
        video.edit().subclips.clear();
        if (sameName) {
            video.edit().fileName = QStringLiteral("C0001.MP4");
        }
    }
    ExportChoices choices = defaultExportChoices(project);
    choices.outputFolder = dataPath(QStringLiteral("selects"));
    for (auto _ : state) {
        benchmark::DoNotOptimize(planRows(project, choices, true));
    }
}

BENCHMARK(anchorOurs)->Name("anchor/ours")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(anchorTheirs)->Name("anchor/theirs")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(copyOurs)->Name("copy/ours")->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(copyAndHashTheirs)
    ->Name("copy/cp-then-hash")
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(copyAndSyncTheirs)
    ->Name("copy/cp-then-sync")
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(scanOurs, one, QStringLiteral("one-folder"), 1)
    ->Name("scan-one-folder/ours")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(scanTheirs, one, QStringLiteral("one-folder"), 1)
    ->Name("scan-one-folder/theirs")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(scanOurs, many, QStringLiteral("many-folders"), 2000)
    ->Name("scan-many-folders/ours")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(scanTheirs, many, QStringLiteral("many-folders"), 2000)
    ->Name("scan-many-folders/theirs")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plan, same, true)->Name("plan-one-name/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plan, own, false)->Name("plan-own-names/ours")->Unit(benchmark::kMillisecond);

} // namespace
