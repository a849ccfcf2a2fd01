#pragma once

#include "delivery/ExportPlanning.h"
#include "session/ProjectStore.h"
#include "support/SampleProject.h"
#include "transfer/FakeSessions.h"

namespace corvane::test {

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
