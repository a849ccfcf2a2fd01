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

QString projectFileError(const std::exception &error) {
    return QStringLiteral("Could not write project file: ") + describe(error);
}

void reportRun(const HandoffRun &run, Phase phase) {
    const int total = int(run.plan.clips.size());
    run.onProgress({.index = total,
                    .total = total,
                    .currentFilename = paths::lastComponent(run.paths.projectFile),
                    .phase = phase,
                    .rowProgress = phase == Phase::done ? 1.0 : 0.0});
}

QCoro::Task<> deliverClip(std::shared_ptr<HandoffRun> run, HandoffClip clip, int index) {
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

/// Replaces the stub by the final document, after everything that it refers to is on disk.
QCoro::Task<> completePackage(std::shared_ptr<HandoffRun> run, Project stub) {
    reportRun(*run, Phase::writingProject);
    co_await run->packageGrants.grantAll(run->paths.projectFile);
    const Project project =
        PackageProject::finished(run->plan, stub, run->videos, run->clock.now());
    ProjectFileIO io;
    try {
        co_await userInitiatedExecutor().run(
            [folder = run->paths.folder] { fileSystem().syncVolume(folder); });
        co_await io.save(project, run->paths.projectFile, false);
    } catch (const std::exception &error) {
        run->result.generalError = projectFileError(error);
    }
}

} // namespace

SelectsHandoffEngine::SelectsHandoffEngine(MediaSourceAuthorization &authorization,
                                           media::ExportSessionFactory &sessions,
                                           CacheFunctions cache, Clock &clock)
    : m_authorization(authorization),
      m_sessions(sessions),
      m_cache(std::move(cache)),
      m_clock(clock) {}

QCoro::Task<HandoffResult> SelectsHandoffEngine::run(HandoffPlan plan,
                                                     HandoffProgressHandler onProgress,
                                                     std::shared_ptr<CancelToken> cancelToken) {
    startRun(cancelToken);
    const auto run = std::make_shared<HandoffRun>(
        HandoffRun{.plan = std::move(plan),
                   .packageGrants{m_authorization, cancelToken->requestToken()},
                   .cancelToken = cancelToken,
                   .onProgress = std::move(onProgress),
                   .maker{m_sessions, m_clock, cancelToken->abortToken()},
                   .cache = m_cache,
                   .clock = m_clock});
    try {
        const Project stub = co_await createPackage(run);
        for (int index = 0; index < run->plan.clips.size(); ++index) {
            co_await deliverClip(run, run->plan.clips.at(index), index);
        }
        co_await completePackage(run, stub);
    } catch (const std::exception &error) {
        run->result.generalError = describe(error);
    }
    reportRun(*run, Phase::done);
    HandoffResult result = std::move(run->result);
    result.cancelledCount =
        int(std::ranges::count_if(result.failed, &HandoffRowFailure::cancelled));
    result.cancelled = result.cancelledCount != 0;
    endRun();
    co_return result;
}

/// Creates the unfinished package and returns its document.
QCoro::Task<Project> SelectsHandoffEngine::createPackage(std::shared_ptr<HandoffRun> run) {
    const HandoffPlan &plan = run->plan;
    run->paths =
        co_await userInitiatedExecutor().run([plan, now = m_clock.now().toSecsSinceEpoch()] {
            PackageFolder::assertFreeSpace(plan);
            return PackageFolder::reserve(plan, [now] { return now; });
        });
    run->result.packageFolder = run->paths.folder;
    const Project stub = PackageProject::stub(plan, run->paths, m_clock.now());
    ProjectFileIO io;
    try {
        co_await io.save(stub, run->paths.projectFile, false);
    } catch (const std::exception &error) {
        throw RunError(projectFileError(error));
    }
    run->result.projectFileURL = run->paths.projectFile;
    co_await userInitiatedExecutor().run([paths = run->paths, outputMode = plan.outputMode] {
        PackageFolder::createSkeleton(paths, outputMode);
    });
    co_await m_authorization.authorizeMediaRoot(run->paths.media, run->paths.projectFile);
    run->sourceGrants = {.projectFolder = projectFolder(plan.sourceProjectFilePath),
                         .authorizedSourcePaths = plan.authorizedSourcePaths,
                         .mediaRootAuthorized = plan.sourceMediaRootAuthorized};
    co_return stub;
}

} // namespace corvane
