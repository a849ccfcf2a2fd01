#include "document/ProjectFileIO.h"
#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/SampleProject.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cmath>

using namespace corvane;
using namespace corvane::test;

namespace {

using LoadError = ProjectFileIO::LoadError;
using SaveError = ProjectFileIO::SaveError;

class ProjectFileIOTest : public testing::Test {
  protected:
    QString loadFailure(const QString &path) {
        try {
            await(io.load(path));
            return QStringLiteral("none");
        } catch (const LoadError &error) {
            return error.description();
        }
    }
    QString saveFailure(const Project &project, bool allowDecrease = false) {
        try {
            await(io.save(project, file, allowDecrease));
            return QStringLiteral("none");
        } catch (const SaveError &error) {
            return error.description();
        }
    }

    TestFolder folder;
    QString file = folder.at("Harbor.corvane");
    ProjectFileIO io;
};

/// A file system in which a folder is on another volume than before.
class UnmountedVolume : public SystemFileSystem {
  public:
    explicit UnmountedVolume(QString folder) : m_folder(std::move(folder)) {}

    std::optional<FileStatus> targetStatus(const QString &path) const override {
        auto status = SystemFileSystem::targetStatus(path);
        if (status && path == m_folder) {
            ++status->device;
        }
        return status;
    }

  private:
    QString m_folder;
};

} // namespace

TEST_F(ProjectFileIOTest, DescribesEachKindOfUnreadableFile) {
    const auto expect = [this](const QByteArray &bytes, const QString &text) {
        folder.write("Harbor.corvane", bytes);
        EXPECT_EQ(loadFailure(file), text.arg(file));
    };
    const QByteArray good = encodeJSON(sampleProject(2, 1));
    const QString notJSON = QStringLiteral("%1 is not a valid `.corvane` JSON document.");
    EXPECT_EQ(loadFailure(file),
              QStringLiteral("Failed to read %1: No such file or directory").arg(file));
    expect({}, notJSON);
    expect("[1,2]", notJSON);
    expect(good.left(good.size() / 2), notJSON);
    expect("{\"schemaVersion\": 8}",
           QStringLiteral("%1 uses schema version 8, which is newer than this build supports (7). "
                          "Update Corvane to open this file."));
    expect("{\"schemaVersion\": 7}", QStringLiteral("Failed to decode %1: id: is missing"));
    folder.folder("Folder.corvane");
    const QString asFolder = folder.at("Folder.corvane");
    EXPECT_EQ(loadFailure(asFolder),
              QStringLiteral("%1 is not a file. Pick the `.corvane` file itself.").arg(asFolder));
}

TEST_F(ProjectFileIOTest, ReadsFilesUpToTheSizeLimit) {
    QByteArray bytes = encodeJSON(sampleProject(2, 1));
    bytes.append(ProjectFileIO::kFileLimit - bytes.size(), ' ');
    folder.write("Harbor.corvane", bytes);
    EXPECT_EQ(await(io.load(file)).videos.size(), 2);
    folder.write("Harbor.corvane", bytes + ' ');
    EXPECT_EQ(
        loadFailure(file),
        QStringLiteral("%1 is 32 MB, past the 32 MB limit for a `.corvane` file. Opening it would "
                       "run Corvane out of memory. If this is a real project, it's corrupt — open "
                       "the `.corvane.bak` next to it instead.")
            .arg(file));
}

TEST_F(ProjectFileIOTest, SetsFilePathToTheOpenedPath) {
    await(io.save(sampleProject(1), file, false));
    const QString moved = folder.write("moved/Other.corvane", folder.read("Harbor.corvane"));
    EXPECT_EQ(await(io.load(moved)).filePath, moved);
    const QString link = folder.link("link.corvane", moved);
    EXPECT_EQ(await(io.load(link)).filePath, link);
}

TEST_F(ProjectFileIOTest, TheGuardReadsTheFileOnlyAfterAnotherWriter) {
    EXPECT_EQ(saveFailure(sampleProject(10, 2)), QStringLiteral("none"));
    EXPECT_EQ(saveFailure(sampleProject(10, 2)), QStringLiteral("none"));
    EXPECT_EQ(io.diskGuardFullReloadCountForTesting(), 0);
    await(ProjectFileIO().save(sampleProject(11, 2), file, false));
    EXPECT_EQ(saveFailure(sampleProject(10, 2)),
              QStringLiteral("Save aborted: in-memory has 10 videos but disk has 11. Refusing to "
                             "overwrite a fuller file."));
    EXPECT_EQ(io.diskGuardFullReloadCountForTesting(), 1);
    EXPECT_EQ(saveFailure(sampleProject(11, 1)),
              QStringLiteral("Save aborted: in-memory has 11 subclips but disk has 22. Refusing to "
                             "overwrite a fuller file."));
    EXPECT_EQ(io.diskGuardFullReloadCountForTesting(), 1);
    EXPECT_EQ(saveFailure(sampleProject(1), true), QStringLiteral("none"));
    EXPECT_EQ(await(io.load(file)).videos.size(), 1);
}

TEST_F(ProjectFileIOTest, DoesNotOverwriteADamagedFile) {
    const QByteArray half = encodeJSON(sampleProject(2)).left(200);
    folder.write("Harbor.corvane", half);
    EXPECT_EQ(
        saveFailure(sampleProject(3)),
        QStringLiteral("Save aborted: existing %1 is corrupt or unreadable (%1 is not a valid "
                       "`.corvane` JSON document.). Inspect the file and recover from a "
                       "`.corvane.bak` if needed.")
            .arg(file));
    EXPECT_EQ(folder.read("Harbor.corvane"), half);
}

TEST_F(ProjectFileIOTest, AFailureOfAnyCallOfASaveLeavesAReadableFile) {
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    await(io.save(sampleProject(2), file, false));
    const QByteArray before = folder.read("Harbor.corvane");
    faulty.failAt(0, 0);
    await(io.save(sampleProject(3), file, false));
    const int calls = faulty.calls();
    for (int call = 1; call <= calls; ++call) {
        folder.write("Harbor.corvane", before);
        faulty.failAt(call, ENOSPC);
        EXPECT_THROW(await(ProjectFileIO().save(sampleProject(3), file, true)), SaveError);
        const qsizetype videos = await(io.load(file)).videos.size();
        EXPECT_TRUE(videos == 2 || call == calls) << "call " << call;
        EXPECT_TRUE(folder.temporaries().isEmpty()) << "call " << call;
    }
}

TEST_F(ProjectFileIOTest, ASaveOfAnOpenDocumentRefusesAFileChangedByAnotherProgram) {
    await(io.save(sampleProject(2), file, false));
    const QByteArray original = folder.read("Harbor.corvane");
    const auto saveAfter = [&](const std::function<void()> &change) {
        folder.write("Harbor.corvane", original);
        const auto opened = await(io.open(file));
        change();
        const auto onDisk = folder.has("Harbor.corvane") ? folder.read("Harbor.corvane") : "";
        try {
            await(io.save(sampleProject(3), file, true, opened.baseline));
            await(io.save(sampleProject(3), file, false, opened.baseline));
        } catch (const SaveError &error) {
            EXPECT_EQ(folder.read("Harbor.corvane"), onDisk);
            EXPECT_EQ(error.kind(), SaveError::Kind::changedOnDisk);
            return false;
        }
        return true;
    };
    EXPECT_TRUE(saveAfter([] {}));
    EXPECT_TRUE(saveAfter([&] { folder.write("Harbor.corvane", original); })) << "same contents";
    EXPECT_TRUE(saveAfter([&] { QFile::remove(file); })) << "a missing file is written again";
    EXPECT_FALSE(saveAfter([&] { folder.write("Harbor.corvane", original + ' '); }));
    EXPECT_FALSE(saveAfter([&] { folder.write("Harbor.corvane", original.left(100)); }));
    EXPECT_FALSE(saveAfter([&] {
        QByteArray sameSize = original;
        sameSize.replace("clip-0", "clip-9");
        folder.write("Harbor.corvane", sameSize);
    }));
}

TEST_F(ProjectFileIOTest, WritesNothingIntoTheMountPointOfAnUnmountedVolume) {
    await(io.save(sampleProject(1), file, false));
    const auto opened = await(io.open(file));
    QFile::remove(file);
    UnmountedVolume unmounted(folder.path());
    const FileSystemScope scope(unmounted);
    try {
        await(io.save(sampleProject(1), file, false, opened.baseline));
        ADD_FAILURE() << "saved";
    } catch (const SaveError &error) {
        EXPECT_EQ(error.description(),
                  QStringLiteral("Failed to write %1: The volume that contained it is no longer "
                                 "connected.")
                      .arg(file));
    }
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST_F(ProjectFileIOTest, AFailedSaveIsNotTakenForAForeignChange) {
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    await(io.save(sampleProject(2), file, false));
    const auto opened = await(io.open(file));
    faulty.failAt(0, 0);
    await(io.save(sampleProject(3), file, true, opened.baseline));
    const int calls = faulty.calls();
    for (int call = 1; call <= calls; ++call) {
        faulty.failAt(call, ENOSPC);
        EXPECT_THROW(await(io.save(sampleProject(3 + call), file, true, opened.baseline)),
                     SaveError);
        faulty.failAt(0, 0);
        await(io.save(sampleProject(2), file, true, opened.baseline));
    }
}

TEST_F(ProjectFileIOTest, RefusesToWriteADocumentItCouldNotRead) {
    Project project = sampleProject(1);
    await(io.save(project, file, false));
    project.notes = QString(ProjectFileIO::kFileLimit, QLatin1Char('x'));
    EXPECT_THAT(saveFailure(project).toStdString(), testing::HasSubstr("past the 32 MB limit"));
    EXPECT_FALSE(await(io.load(file)).notes);
    project.notes.reset();
    for (const double number : {HUGE_VAL, std::nan("")}) {
        project.videos[0].edit().durationSeconds = number;
        EXPECT_EQ(
            saveFailure(project),
            QStringLiteral("Failed to write %1: A number is infinite or not a number.").arg(file));
    }
}
