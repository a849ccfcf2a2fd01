#include "delivery/handoff/SelectsHandoffEngine.h"

#include "delivery/handoff/PackageFolder.h"
#include "delivery/handoff/SubclipStep.h"
#include "delivery/handoff/WholeClipStep.h"
#include "document/ProjectFileIO.h"
#include "platform/Paths.h"

#include <algorithm>

namespace corvane {

namespace {

using PackageFolder::RunError;
using Phase = HandoffProgress::Phase;

/// Gives the text that is told where the document can't be written.
QString projectFileError(const std::exception &error) {
    return QStringLiteral("Could not write project file: ") + describe(error);
}

QCoro::Task<PackageProject::Places> reserveFolder(HandoffPlan plan, qint64 now) {
    co_return co_await userInitiatedExecutor().run([plan, now] {
        PackageFolder::assertRoom(plan);
        return PackageFolder::reserve(plan, [now] { return now; });
    });
}

QCoro::Task<> writeStub(Project stub, QString file) {
    ProjectFileIO io;
    try {
        co_await io.save(stub, file, false);
    } catch (const std::exception &error) {
        throw RunError(projectFileError(error));
    }
}

void reportRun(const HandoffRun &run, Phase phase) {
    const int total = int(run.plan.clips.size());
    run.onProgress({.index = total,
                    .total = total,
                    .currentFilename = paths::lastComponent(run.places.projectFile),
                    .phase = phase,
                    .rowProgress = phase == Phase::done ? 1.0 : 0.0});
}

QCoro::Task<> handOver(std::shared_ptr<HandoffRun> run, HandoffClip clip, int index) {
    if (run->cancelToken->isRequested()) {
        run->result.failed.append(failedClip(clip, kCancelledText, true));
        co_return;
    }
    if (clip.isWholeClipSelected) {
        WholeClipStep step(run, clip, index);
        co_await step.perform();
    }
    for (const Subclip &subclip : std::as_const(clip.standaloneSubclips)) {
        SubclipStep step(run, clip, index, subclip);
        co_await step.perform();
    }
}

/// Puts the real document in the stub's place once everything that it names is on the disk.
QCoro::Task<> complete(std::shared_ptr<HandoffRun> run, Project stub) {
    reportRun(*run, Phase::writingProject);
    co_await run->packageGrants.grantAll(run->places.projectFile);
    const Project project =
        PackageProject::finished(run->plan, stub, run->videos, run->clock.now());
    ProjectFileIO io;
    try {
        co_await userInitiatedExecutor().run(
            [folder = run->places.folder] { fileSystem().syncVolume(folder); });
        co_await io.save(project, run->places.projectFile, false);
    } catch (const std::exception &error) {
        run->result.generalError = projectFileError(error);
    }
}

} // namespace

SelectsHandoffEngine::SelectsHandoffEngine(MediaSourceAuthorization &authorization,
                                           media::ExportSessionFactory &sessions,
                                           CacheMaker &cacheMaker, Clock &clock)
    : m_authorization(authorization),
      m_sessions(sessions),
      m_cacheMaker(cacheMaker),
      m_clock(clock) {}

void SelectsHandoffEngine::requestCancel() {
    if (m_cancelToken) {
        m_cancelToken->request();
    }
}

void SelectsHandoffEngine::abort() {
    if (m_cancelToken) {
        m_cancelToken->abort();
        m_abort.request_stop();
    }
}

QCoro::Task<HandoffResult> SelectsHandoffEngine::run(HandoffPlan plan,
                                                     HandoffProgressHandler onProgress) {
    m_cancelToken = std::make_shared<CancelToken>();
    m_abort = std::stop_source();
    m_isRunning = true;
    const auto run = std::make_shared<HandoffRun>(HandoffRun{.plan = std::move(plan),
                                                             .packageGrants{m_authorization},
                                                             .cancelToken = m_cancelToken,
                                                             .abort = m_abort.get_token(),
                                                             .onProgress = std::move(onProgress),
                                                             .sessions = m_sessions,
                                                             .cacheMaker = m_cacheMaker,
                                                             .clock = m_clock});
    try {
        const Project stub = co_await begin(run);
        for (int index = 0; index < run->plan.clips.size(); ++index) {
            co_await handOver(run, run->plan.clips.at(index), index);
        }
        co_await complete(run, stub);
    } catch (const std::exception &error) {
        run->result.generalError = describe(error);
    }
    reportRun(*run, Phase::done);
    HandoffResult result = std::move(run->result);
    result.cancelledCount =
        int(std::ranges::count_if(result.failed, &HandoffRowFailure::cancelled));
    result.cancelled = result.cancelledCount != 0;
    m_isRunning = false;
    co_return result;
}

/// From nothing to a package that says that it is unfinished. Gives the document that says so.
QCoro::Task<Project> SelectsHandoffEngine::begin(std::shared_ptr<HandoffRun> run) {
    run->places = co_await reserveFolder(run->plan, m_clock.now().toSecsSinceEpoch());
    run->result.packageFolder = run->places.folder;
    const Project stub = PackageProject::stub(run->plan, run->places, m_clock.now());
    co_await writeStub(stub, run->places.projectFile);
    run->result.projectFileURL = run->places.projectFile;
    co_await userInitiatedExecutor().run([places = run->places, outputMode = run->plan.outputMode] {
        PackageFolder::createSkeleton(places, outputMode);
    });
    co_await m_authorization.authorizeMediaRoot(run->places.media, run->places.projectFile);
    run->sourceGrants = {.projectFolder = projectFolder(run->plan.sourceProjectFilePath),
                         .authorizedSourcePaths = run->plan.authorizedSourcePaths,
                         .mediaRootAuthorized = run->plan.sourceMediaRootAuthorized};
    co_return stub;
}

} // namespace corvane
