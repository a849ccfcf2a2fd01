#pragma once

#include "delivery/DeliveryFixture.h"
#include "delivery/handoff/HandoffPlanning.h"
#include "delivery/handoff/SelectsHandoffEngine.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "trust/PathSafety.h"

#include <QSettings>

namespace corvane::test {

/// Replaces the cache functions: constant facts, and images that only say "made".
class FakeCache {
  public:
    CacheFunctions functions() {
        return {
            .process = [this](const QString &id, const QString &file,
                              const QString &cacheRoot) { return process(id, file, cacheRoot); },
            .makeFilmstrip =
                [this](const QString &id, const QString &file, const QString &cacheRoot,
                       const std::stop_token &) { return makeFilmstrip(id, file, cacheRoot); }};
    }

    QStringList made;

  private:
    QCoro::Task<MetadataProcessor::Outcome> process(QString id, QString file, QString cacheRoot) {
        made.append(text("thumbnail of ") + paths::lastComponent(file));
        const QString name = text("thumbnails/") + id + text(".jpg");
        write(cacheRoot + text("/") + name);
        co_return {.videoId = id,
                   .durationSeconds = 3.5,
                   .codec = text("avc1"),
                   .thumbnailRelativePath = name};
    }
    QCoro::Task<QStringList> makeFilmstrip(QString id, QString file, QString cacheRoot) {
        made.append(text("filmstrip of ") + paths::lastComponent(file));
        write(cacheRoot + text("/") + id + text("/filmstrip/frame-00.jpg"));
        throw Failure(text("a filmstrip is optional"));
        co_return {};
    }
    static void write(const QString &path) {
        fileSystem().createFolders(paths::parentFolder(path));
        writeAtomically(path, "made");
    }
};

/// Clips that are handed over into "out". Their ids are UUIDs.
class HandoffTest : public DeliveryTest {
  protected:
    HandoffTest() {
        folder.folder("out");
        project.name = text("Harbor");
        project.notes = text("Bring gulls.");
    }

    static QString uuid(int number) {
        return text("8D7C8C0E-2B6C-4F52-9A35-") + QString::asprintf("%012d", number);
    }
    VideoRecord &addVideo(const char *name, const QByteArray &bytes) {
        return addClip(uuid(int(project.videos.size()) + 1).toUtf8().constData(), name, bytes);
    }
    static Subclip &addSubclip(VideoRecord &video, const char *label) {
        Subclip subclip = sampleSubclip(uuid(100 + int(video.subclips.size())), video.id,
                                        int(video.subclips.size()) + 1);
        subclip.selectedForExport = true;
        subclip.label = *label ? std::optional(text(label)) : std::nullopt;
        video.subclips.append(subclip);
        return video.subclips.last();
    }
    void addCache(const QString &name, const QByteArray &bytes) const {
        folder.write(text("project/.corvane-cache/") + name, bytes);
    }
    void addFilmstrip(const VideoRecord &video) const {
        for (int frame = 0; frame < 15; ++frame) {
            addCache(video.id + QString::asprintf("/filmstrip/frame-%02d.jpg", frame), "kept");
        }
    }

    HandoffPlan plan() {
        handoff.destinationFolder = at("out");
        HandoffPlan plan = makePlan(project, handoff);
        plan.authorizedSourcePaths = await(authorization.authorizedPaths(projectFile));
        return plan;
    }
    HandoffResult run(const HandoffPlan &plan) {
        const auto report = [this](const HandoffProgress &reported) {
            progress.append(reported);
            onProgress(reported);
        };
        return await(engine.run(plan, report, std::make_shared<CancelToken>()));
    }
    HandoffResult run() {
        grantAndOpen();
        handoff.projectName = text("Show");
        return run(plan());
    }
    /// The document of the package "Show".
    Project delivered() const { return ProjectFileIO::loadNow(at("out/Show/Show.corvane")); }
    QStringList media() const { return folder.names("out/Show/media"); }
    QByteArray output(const char *name) const {
        return folder.read(text("out/Show/media/") + text(name));
    }
    QByteArray cached(const QString &name) const {
        return folder.read(text("out/Show/.corvane-cache/") + name);
    }
    std::unique_ptr<QSettings> settings() const {
        return std::make_unique<QSettings>(at("defaults.ini"), QSettings::IniFormat);
    }

    FakeCache cache;
    SelectsHandoffEngine engine{authorization, sessions, cache.functions(), clock};
    HandoffChoices handoff = defaultHandoffChoices(project);
    QList<HandoffProgress> progress;
    HandoffProgressHandler onProgress = [](const HandoffProgress &) {};
};

} // namespace corvane::test
