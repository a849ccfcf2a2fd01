#pragma once

#include "session/ProjectStore.h"
#include "support/SampleProject.h"
#include "transfer/TransferFixture.h"

namespace corvane::test {

/// An open project in the folder "project" with clips in "footage".
class DeliveryTest : public TransferTest {
  protected:
    DeliveryTest() {
        project.filePath = projectFile;
        project.videos.clear();
    }

    /// Adds a selected clip. Rows of an export are ordered by id.
    VideoRecord &addClip(const char *id, const char *name, const QByteArray &bytes) {
        VideoItem video = sampleVideo(text(id));
        video.edit().fileName = text(name);
        video.edit().sourcePath = folder.write(footage(name), bytes);
        video.edit().selectedForExport = true;
        project.videos.append(video);
        return project.videos.last().edit();
    }
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

    ProjectFileIO io;
    ProjectRegistry registry{folder.at(text("data")), clock};
    BackupService backups{clock};
    MediaSourceAuthorization authorization{folder.folder(text("data"))};
    ProjectStore store{io, registry, backups, authorization, clock};
    QString projectFile = folder.folder(text("project")) + text("/Harbor.corvane");
    Project project = sampleProject(0);
};

} // namespace corvane::test
