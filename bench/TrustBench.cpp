// Measures how much the registry of grants adds to opening a large project, and the cost of one
// grant in a registry of the maximum size.

#include "BenchData.h"

#include "document/ProjectFileIO.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "session/ProjectStore.h"
#include "trust/AuthorizationFile.h"
#include "trust/PathSafety.h"

#include <benchmark/benchmark.h>

using namespace corvane;
using namespace corvane::bench;

namespace {

constexpr int kClips = 20'000;

QString trustFolder(const QString &name) {
    const QString folder = dataPath(name);
    fileSystem().createFolders(paths::joined(folder, QStringLiteral("media")));
    return folder;
}

RootIdentity grantIn(const QString &folder) {
    RootIdentity identity = *PathSafety::folderIdentity(folder);
    identity.contentHash = QStringLiteral("3:") + QString(96, QLatin1Char('a'));
    return identity;
}

QString registryFile(const QString &folder) {
    return paths::joined(folder, QStringLiteral("media-authorizations.json"));
}

/// A session with a project of 20,000 clips, all granted.
struct GrantedProject {
    QString folder = trustFolder(QStringLiteral("granted"));
    QString file = paths::joined(folder, QStringLiteral("granted.corvane"));
    bool isCreated = create();
    ProjectFileIO io;
    ProjectRegistry registry{folder};
    BackupService backups;
    MediaSourceAuthorization authorization{folder};
    ProjectStore store{io, registry, backups, authorization};

    bool create() const {
        Project project = largeProject(kClips);
        AuthorizedPaths grants;
        const RootIdentity identity = grantIn(folder);
        for (VideoItem &video : project.videos) {
            video.edit().subclips.clear();
            grants.insert(video->sourcePath, identity);
        }
        writeAtomically(file, encodeJSON(project));
        return AuthorizationFile::write({.authorizedPaths = {{file, grants}}},
                                        registryFile(folder)) > 0;
    }
};

void readDocument(benchmark::State &state) {
    GrantedProject project;
    for (auto _ : state) {
        benchmark::DoNotOptimize(waitUntilDone(project.io.load(project.file)));
    }
}

void checkMedia(benchmark::State &state) {
    GrantedProject project;
    waitUntilDone(project.store.openProject(project.file));
    if (!project.isCreated || !project.store.project() ||
        waitUntilDone(project.authorization.authorizedPaths(project.file)).size() != kClips) {
        state.SkipWithError("the project or its grants can't be read");
    }
    for (auto _ : state) {
        waitUntilDone(project.store.refreshMediaConfirmationState());
    }
}

/// Returns grants of other projects, just under the size limit of the file.
AuthorizationTables fullRegistry(const RootIdentity &identity) {
    AuthorizationTables tables;
    const QString file = registryFile(trustFolder(QStringLiteral("sample")));
    const auto projectGrants = [&identity](int project) {
        AuthorizedPaths grants;
        for (int clip = 0; clip < 500; ++clip) {
            grants.insert(QStringLiteral("/media/cards/project-%1/C%2.MP4").arg(project).arg(clip),
                          identity);
        }
        return grants;
    };
    tables.authorizedPaths.insert(QStringLiteral("/p/0"), projectGrants(0));
    AuthorizationFile::write(tables, file);
    const qint64 projectSize = fileSystem().status(file).size;
    constexpr qint64 kReserve = 16 << 10;
    for (int project = 1;
         (project + 1) * (projectSize + 1000) + kReserve < MediaSourceAuthorization::kFileLimit;
         ++project) {
        tables.authorizedPaths.insert(QStringLiteral("/p/%1").arg(project), projectGrants(project));
    }
    return tables;
}

void grantOne(benchmark::State &state) {
    const QString folder = trustFolder(QStringLiteral("full"));
    AuthorizationFile::write(fullRegistry(grantIn(folder)), registryFile(folder));
    MediaSourceAuthorization authorization(folder);
    int count = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const QString clip =
            paths::joined(folder, QStringLiteral("media/C%1.MP4").arg(++count % 8));
        const QString project = QStringLiteral("/p/new-%1").arg(count % 8);
        writeAtomically(clip, "a clip");
        state.ResumeTiming();
        waitUntilDone(authorization.authorize({clip}, project));
    }
    if (authorization.unsavedNotice()) {
        state.SkipWithError("the registry could not be written");
    }
    state.counters["megabytes"] = double(fileSystem().status(registryFile(folder)).size) / 1048576;
}

BENCHMARK(readDocument)->Name("media-checks/read")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(checkMedia)->Name("media-checks/ours")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(grantOne)
    ->Name("grant-one/ours")
    ->UseRealTime()
    ->Iterations(8)
    ->Unit(benchmark::kMillisecond);

} // namespace
