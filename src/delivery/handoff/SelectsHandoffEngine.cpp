#include "delivery/handoff/SelectsHandoffEngine.h"

#include "delivery/handoff/SubclipStep.h"
#include "delivery/handoff/WholeClipStep.h"
#include "platform/Paths.h"

#include <algorithm>

namespace corvane {

namespace {

using Phase = HandoffProgress::Phase;

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

/// The document of an unfinished package and its bytes on disk.
struct Stub {
    Project document;
    QByteArray bytes;
};

/// Replaces the stub by the final document, after everything that it refers to is on disk.
QCoro::Task<> completePackage(std::shared_ptr<HandoffRun> run, Stub stub) {
    reportRun(*run, Phase::writingProject);
    co_await userInitiatedExecutor().run([run] { run->folders->assertAllInPlace(); });
    co_await run->packageGrants.grantAll(run->paths.projectFile);
    const Project project =
        PackageProject::finished(run->plan, stub.document, run->videos, run->clock.now());
    co_await userInitiatedExecutor().run([package = run->folders->package, project, stub] {
        try {
            fileSystem().syncVolume(package.anchoredPath());
        } catch (const FileError &error) {
            throw PackageFolder::RunError(QStringLiteral("Could not write project file: ") +
                                          error.description());
        }
        PackageFolder::writeDocument(package, project, stub.bytes);
    });
}

/// Creates the unfinished package.
QCoro::Task<Stub> createPackage(std::shared_ptr<HandoffRun> run,
                                MediaSourceAuthorization &authorization) {
    const HandoffPlan &plan = run->plan;
    const QDateTime now = run->clock.now();
    const OpenFolder package =
        co_await userInitiatedExecutor().run([plan, seconds = now.toSecsSinceEpoch()] {
            PackageFolder::assertSizes(plan);
            PackageFolder::assertFreeSpace(plan);
            return PackageFolder::reserve(plan, [seconds] { return seconds; });
        });
    run->paths = PackageProject::Paths::of(package.path(), plan.projectName);
    run->result.packageFolder = run->paths.folder;
    Stub stub{.document = PackageProject::stub(plan, run->paths, now), .bytes = {}};
    stub.bytes = co_await userInitiatedExecutor().run([package, document = stub.document] {
        return PackageFolder::writeDocument(package, document, std::nullopt);
    });
    run->result.projectFileURL = run->paths.projectFile;
    run->folders = co_await userInitiatedExecutor().run([package, outputMode = plan.outputMode] {
        return PackageFolder::createSkeleton(package, outputMode);
    });
    co_await authorization.authorizeMediaRoot(run->paths.media, run->paths.projectFile);
    run->sourceGrants = {.projectFolder = projectFolder(plan.sourceProjectFilePath),
                         .authorizedSourcePaths = plan.authorizedSourcePaths,
                         .mediaRootAuthorized = plan.sourceMediaRootAuthorized};
    co_return stub;
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
        const Stub stub = co_await createPackage(run, m_authorization);
        for (int index = 0; index < run->plan.clips.size(); ++index) {
            co_await deliverClip(run, run->plan.clips.at(index), index);
        }
        co_await run->maker.finish();
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

} // namespace corvane
