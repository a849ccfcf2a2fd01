// A handoff, compared with only the verified copies of its media.

#include "BenchData.h"

#include "delivery/handoff/HandoffPlanning.h"
#include "delivery/handoff/SelectsHandoffEngine.h"
#include "media/ExportSession.h"
#include "mediacache/FilmstripService.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "transfer/ImportCopier.h"

#include <benchmark/benchmark.h>

using namespace corvane;
using namespace corvane::bench;

namespace {

constexpr int kClips = 200;

/// The total size of all clips: $CORVANE_BENCH_HANDOFF_MIB MiB, by default 4 GiB.
qint64 footageBytes() {
    bool isSet = false;
    const int wanted = qEnvironmentVariableIntValue("CORVANE_BENCH_HANDOFF_MIB", &isSet);
    return qint64(isSet ? wanted : 4096) << 20;
}

/// A project of granted clips whose thumbnails and filmstrips are all cached.
class Footage {
  public:
    Footage() : m_authorization(dataPath(QStringLiteral("handoff/data"))) {
        fileSystem().createFolders(dataPath(QStringLiteral("handoff/footage")));
        fileSystem().createFolders(dataPath(QStringLiteral("handoff/out")));
        m_project.filePath = dataPath(QStringLiteral("handoff/project/Bench.corvane"));
        m_project.name = QStringLiteral("Bench");
        QStringList sources;
        for (int index = 0; index < kClips; ++index) {
            addClip(index);
            sources.append(m_project.videos.last()->sourcePath);
        }
        waitUntilDone(m_authorization.authorize(sources, m_project.filePath));
        m_grants = waitUntilDone(m_authorization.authorizedPaths(m_project.filePath));
    }

    HandoffPlan plan() const {
        HandoffChoices choices = defaultHandoffChoices(m_project);
        choices.destinationFolder = dataPath(QStringLiteral("handoff/out"));
        HandoffPlan result = makePlan(m_project, choices);
        result.authorizedSourcePaths = m_grants;
        return result;
    }
    const AuthorizedPaths &grants() const { return m_grants; }
    MediaSourceAuthorization &authorization() { return m_authorization; }

  private:
    void addClip(int index) {
        const QString id = newIdentifier();
        const QString path = largeFile(QStringLiteral("handoff/footage/C%1.mov").arg(index),
                                       footageBytes() / kClips);
        m_project.videos.append(VideoRecord{.id = id,
                                            .sourcePath = path,
                                            .fileName = QStringLiteral("C%1.mov").arg(index),
                                            .selectedForExport = true});
        const QString cache = cacheRoot(m_project.filePath);
        const QByteArray picture(12'000, 'x');
        QStringList pictures = FilmstripService::framePaths(id, cache);
        pictures.append(cache + QStringLiteral("/thumbnails/%1.jpg").arg(id));
        for (const QString &file : std::as_const(pictures)) {
            const QString folder = paths::parentFolder(file);
            fileSystem().createFolders(folder);
            TemporaryFile written(OpenFolder::at(folder), QStringLiteral(".tmp"), 0666,
                                  Durability::Later);
            written.write(picture.constData(), picture.size());
            written.finish();
            written.commit(paths::lastComponent(file));
        }
    }

    MediaSourceAuthorization m_authorization;
    Project m_project;
    AuthorizedPaths m_grants;
};

Footage &footageToHandOver() {
    static Footage footage;
    return footage;
}

void clearOutputs() {
    runCommand(QStringLiteral("rm -rf '%1'; mkdir -p '%1'; sync")
                   .arg(dataPath(QStringLiteral("handoff/out"))));
}

void handoffOurs(benchmark::State &state) {
    Footage &footage = footageToHandOver();
    for (auto _ : state) {
        state.PauseTiming();
        clearOutputs();
        state.ResumeTiming();
        SelectsHandoffEngine engine(footage.authorization(), media::ffmpegExportSessions());
        const HandoffResult result = waitUntilDone(engine.run(
            footage.plan(), [](const HandoffProgress &) {}, std::make_shared<CancelToken>()));
        if (result.succeeded.size() != kClips || result.generalError) {
            state.SkipWithError("a handoff lost clips");
        }
    }
    clearOutputs();
}

void handoffCopies(benchmark::State &state) {
    const Footage &footage = footageToHandOver();
    for (auto _ : state) {
        state.PauseTiming();
        clearOutputs();
        state.ResumeTiming();
        const OpenFolder out = OpenFolder::at(dataPath(QStringLiteral("handoff/out")));
        for (const auto &[path, identity] : footage.grants().asKeyValueRange()) {
            const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
            ImportCopier::copy(path, {out, path.mid(slash + 1)},
                               ImportCopier::SourceRoot{path.left(slash), identity}, {}, {});
        }
    }
    clearOutputs();
}

BENCHMARK(handoffOurs)
    ->Name("handoff/ours")
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(handoffCopies)
    ->Name("handoff/copies")
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace
