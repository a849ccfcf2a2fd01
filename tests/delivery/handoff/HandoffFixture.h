#pragma once

#include "delivery/DeliveryFixture.h"
#include "delivery/handoff/HandoffPlanning.h"
#include "delivery/handoff/SelectsHandoffEngine.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "trust/PathSafety.h"

namespace corvane::test {

/// Stands in for what reads and draws media: facts that are always the same, and pictures that say
/// what they were made of.
class FakeCacheMaker : public CacheMaker {
  public:
    QCoro::Task<MetadataProcessor::Outcome> process(QString id, QString file,
                                                    QString cacheRoot) override {
        made.append(text("thumbnail of ") + paths::lastComponent(file));
        const QString name = text("thumbnails/") + id + text(".jpg");
        put(cacheRoot + text("/") + name, "made");
        co_return {.videoId = id,
                   .durationSeconds = 3.5,
                   .codec = text("avc1"),
                   .thumbnailRelativePath = name};
    }
    QCoro::Task<> makeFilmstrip(QString id, QString file, QString cacheRoot,
                                std::stop_token) override {
        made.append(text("filmstrip of ") + paths::lastComponent(file));
        put(cacheRoot + text("/") + id + text("/filmstrip/frame-00.jpg"), "made");
        throw Failure(text("a filmstrip that fails costs nothing"));
        co_return;
    }

    QStringList made;

  private:
    static void put(const QString &path, const QByteArray &bytes) {
        fileSystem().createFolders(paths::parentFolder(path));
        writeAtomically(path, bytes);
    }
};

/// Clips that are handed over into "out", with ids that are UUIDs.
class HandoffTest : public ExportTest {
  protected:
    HandoffTest() {
        folder.folder(text("out"));
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
        HandoffPlan made = makePlan(project, handoff);
        made.authorizedSourcePaths = await(authorization.authorizedPaths(projectFile));
        return made;
    }
    HandoffResult run(const HandoffPlan &given) {
        return await(engine.run(given, [this](const HandoffProgress &told) {
            progress.append(told);
            onProgress(told);
        }));
    }
    HandoffResult run() {
        grantAndOpen();
        handoff.projectName = text("Show");
        return run(plan());
    }
    /// The document of the package "Show".
    Project delivered() const { return ProjectFileIO::loadNow(at("out/Show/Show.corvane")); }
    QStringList media() const { return folder.names(text("out/Show/media")); }
    QByteArray output(const char *name) const {
        return folder.read(text("out/Show/media/") + text(name));
    }
    QByteArray cached(const QString &name) const {
        return folder.read(text("out/Show/.corvane-cache/") + name);
    }
    static QStringList errors(const HandoffResult &result) {
        QStringList texts;
        for (const HandoffRowFailure &failure : result.failed) {
            texts.append(failure.error);
        }
        return texts;
    }

    FakeCacheMaker cacheMaker;
    SelectsHandoffEngine engine{authorization, sessions, cacheMaker, clock};
    HandoffChoices handoff = defaultHandoffChoices(project);
    QList<HandoffProgress> progress;
    HandoffProgressHandler onProgress = [](const HandoffProgress &) {};
};

} // namespace corvane::test
