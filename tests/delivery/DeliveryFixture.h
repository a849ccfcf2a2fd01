#pragma once

#include "delivery/DeliverySheet.h"
#include "session/ProjectStore.h"
#include "support/SampleProject.h"
#include "transfer/Destination.h"
#include "transfer/TransferFixture.h"

#include <QDir>
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

    /// Runs a delivery once for every `stride`-th of its calls after it opened the folder: before
    /// that call, an empty folder, or a link to one, takes the path of `swapped`. Expects that
    /// nothing is written to the other folder, and calls `check` with the result.
    template <typename Run, typename Check>
    void swapDestinationDuring(const QString &opened, const QString &swapped, int stride, Run run,
                               Check check) {
        int calls = 0;
        files.setObserver([&](const QString &operation, const QString &path) {
            if (calls == 0 && operation.startsWith(QLatin1String("openFolder")) &&
                opened.endsWith(path)) {
                calls = files.calls() + 1;
            }
        });
        files.failAt(0, 0);
        QDir(at("out")).removeRecursively();
        folder.folder("out");
        run();
        files.setObserver({});
        ASSERT_GT(calls, 0);
        for (const bool isLink : {false, true}) {
            for (int call = calls + 1;; call += stride) {
                for (const char *name : {"out", "out.away", "other"}) {
                    QDir(at(text(name))).removeRecursively();
                    QFile::remove(at(text(name)));
                }
                folder.folder("out");
                folder.folder("decoy");
                const QString other =
                    isLink ? folder.link("other", at("decoy")) : folder.folder("other");
                files.swapAt(call, swapped, other);
                const auto result = run();
                files.failAt(0, 0);
                if (!QFileInfo::exists(swapped + text(".away"))) {
                    QFile::remove(other);
                    break;
                }
                SCOPED_TRACE(call);
                EXPECT_THAT(
                    QDir(swapped).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                    testing::IsEmpty());
                check(result);
                QFile::remove(swapped); // a link
            }
        }
    }
    /// The sentence about a destination that another folder replaced.
    std::string lostText(const QString &path) const {
        return shortened(DestinationLost(path).description());
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
