#pragma once

#include "export/ExportPlanning.h"
#include "media/ExportSession.h"
#include "session/ProjectStore.h"
#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/SampleProject.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <QFile>

namespace corvane::test {

inline QString text(const char *utf8) {
    return QString::fromUtf8(utf8);
}

/// Stands in for a media framework: an output is the preset's name, the range and the asset's
/// bytes.
class FakeSessions : public media::ExportSessionFactory {
  public:
    bool canCreateSessions() const override { return true; }
    std::unique_ptr<media::ExportSession> create(const QString &asset,
                                                 media::ExportPreset preset) override {
        assets.append(asset);
        return makesNone ? nullptr : std::make_unique<Session>(*this, asset, preset);
    }
    static QByteArray output(media::ExportPreset preset, const QByteArray &asset,
                             std::optional<media::MediaTimeRange> range = {}) {
        return rawValue(preset).toUtf8() + ' ' +
               (range ? QByteArray::number(range->in.value) + '-' +
                            QByteArray::number(range->out.value)
                      : "all") +
               ' ' + asset;
    }

    QStringList assets; ///< in the order in which they were opened
    bool makesNone = false;
    /// Called half way through each output, on the executor's thread, with the unfinished file.
    std::function<void(const QString &output)> halfway = [](const QString &) {};

  private:
    struct Session : media::ExportSession {
        Session(FakeSessions &sessions, QString given, media::ExportPreset chosen)
            : owner(sessions), asset(std::move(given)), preset(chosen) {}

        void run(const QString &path, std::optional<media::MediaTimeRange> range,
                 std::stop_token stop) override {
            QFile from(asset);
            QFile into(path);
            EXPECT_TRUE(from.open(QIODevice::ReadOnly));
            EXPECT_TRUE(
                into.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::ExistingOnly));
            into.write("half");
            into.flush();
            owner.halfway(path);
            if (stop.stop_requested()) {
                throw Cancelled();
            }
            into.resize(0);
            into.seek(0);
            into.write(output(preset, from.readAll(), range));
        }
        double progress() const override { return 0.5; }

        FakeSessions &owner;
        QString asset;
        media::ExportPreset preset;
    };
};

/// An open project in the folder "project" with clips in the folder "footage", all files behind a
/// file system that can fail, and a temporary folder of its own.
class ExportTest : public testing::Test {
  protected:
    ExportTest() {
        qputenv("TMPDIR", folder.folder(text("tmp")).toUtf8());
        project.filePath = projectFile;
        project.videos.clear();
        choices.outputFolder = folder.at(text("out"));
        applyPreset(choices.naming, NamingPreset::keepOriginal, {});
    }
    ~ExportTest() override { qunsetenv("TMPDIR"); }

    /// A selected clip; its id decides its place in the run.
    VideoRecord &addClip(const char *id, const char *name, const QByteArray &bytes) {
        VideoItem video = sampleVideo(text(id));
        video.edit().fileName = text(name);
        video.edit().sourcePath = folder.write(footage(name), bytes);
        video.edit().selectedForExport = true;
        project.videos.append(video);
        return project.videos.last().edit();
    }
    static QString footage(const char *name) { return text("footage/") + text(name); }
    void addSidecar(VideoRecord &video, const char *name, const QByteArray &bytes) const {
        video.sidecarPath = folder.write(footage(name), bytes);
    }
    void grantAndOpen() {
        QStringList sources;
        for (const VideoItem &video : project.videos) {
            sources.append(video->sourcePath);
        }
        await(authorization.authorize(sources, projectFile));
        await(io.save(project, projectFile, false));
        await(store.openProject(projectFile));
        await(store.flushPendingSave());
    }
    QString at(const char *relative) const { return folder.at(text(relative)); }
    QByteArray delivered(const char *name) const { return folder.read(text("out/") + text(name)); }
    bool has(const char *path) const { return folder.has(text(path)); }
    void expectNoTemporaries() const {
        EXPECT_THAT(folder.temporaries(), testing::IsEmpty());
        EXPECT_THAT(folder.names(text("tmp")), testing::IsEmpty());
    }

    TestFolder folder;
    FaultyFileSystem files;
    FileSystemScope scope{files};
    TestClock clock;
    ProjectFileIO io;
    ProjectRegistry registry{folder.at(text("data")), clock};
    BackupService backups{clock};
    MediaSourceAuthorization authorization{folder.folder(text("data"))};
    ProjectStore store{io, registry, backups, authorization, clock};
    QString projectFile = folder.folder(text("project")) + text("/Harbor.corvane");
    Project project = sampleProject(0);
    ExportChoices choices;
    FakeSessions sessions;
};

} // namespace corvane::test
