#pragma once

#include "delivery/DeliverySheet.h"
#include "session/ProjectStore.h"
#include "support/SampleProject.h"
#include "transfer/TransferFixture.h"

#include <QEventLoop>

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
    /// Starts a sheet's run and waits for its result.
    static void runSheet(DeliverySheet &sheet) {
        QEventLoop loop;
        QObject::connect(&sheet, &DeliverySheet::resultChanged, &loop, &QEventLoop::quit);
        sheet.start();
        loop.exec();
    }
    /// An error without the path of the test folder.
    std::string shortened(std::optional<QString> error) const {
        return error.value_or(QString()).remove(folder.path()).toStdString();
    }
    /// The shortened errors of a result's failed rows.
    template <typename Result> std::vector<std::string> errorsOf(const Result &result) const {
        std::vector<std::string> errors;
        for (const auto &row : result.failed) {
            errors.push_back(shortened(row.error));
        }
        return errors;
    }

    ProjectFileIO io;
    ProjectRegistry registry{folder.at("data"), clock};
    BackupService backups{clock};
    MediaSourceAuthorization authorization{folder.folder("data")};
    ProjectStore store{io, registry, backups, authorization, clock};
    QString projectFile = folder.folder("project") + text("/Harbor.corvane");
    Project project = sampleProject(0);
};

} // namespace corvane::test
