#include "import/SourceScan.h"

#include "platform/SystemFileSystem.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

using namespace corvane;
using corvane::test::TestFolder;

namespace {

/// The system's files with counts of calls. The folder "locked" cannot be listed, and "replaced" is
/// replaced by a link when it is listed.
class CountingFileSystem : public SystemFileSystem {
  public:
    QList<DirectoryEntry> list(const QString &folder) const override {
        ++listCalls[folder];
        if (folder.endsWith(QStringLiteral("/replaced"))) {
            EXPECT_TRUE(QFile::rename(folder, folder + QStringLiteral("-before")));
            EXPECT_TRUE(QFile::link(folder + QStringLiteral("-before"), folder));
        }
        if (folder.endsWith(QStringLiteral("/locked"))) {
            throw FileError(folder, EACCES);
        }
        QList<DirectoryEntry> entries = SystemFileSystem::list(folder);
        for (DirectoryEntry &entry : entries) {
            entry.isTypeKnown = entry.isTypeKnown && !hidesTypes;
        }
        return entries;
    }
    std::optional<FileStatus> linkStatus(const QString &path) const override {
        ++statusCalls[path];
        return SystemFileSystem::linkStatus(path);
    }

    mutable QHash<QString, int> listCalls;
    mutable QHash<QString, int> statusCalls;
    bool hidesTypes = false;
};

/// Lists of names are texts separated by spaces.
class SourceScanTest : public testing::Test {
  protected:
    QString at(const char *name) const { return folder.at(name); }
    void fill(const char *names) const {
        for (const QString &name : QString::fromLatin1(names).split(QLatin1Char(' '))) {
            folder.write(name, "12345");
        }
    }
    std::string found(const ScanResult &result) const {
        QStringList names;
        for (const ScannedVideo &video : result.videos) {
            names.append(video.url.mid(folder.path().size() + 1));
        }
        return names.join(QLatin1Char(' ')).toStdString();
    }

    TestFolder folder;
    CountingFileSystem countingFiles;
    FileSystemScope scope{countingFiles};
};

/// The sidecar found for A001.mov in a folder with these files.
std::string sidecarAmong(const char *names) {
    const TestFolder card;
    for (const QString &name : QString::fromLatin1(names).split(QLatin1Char(' '))) {
        card.write(name, "sidecar");
    }
    const QString clip = card.write("A001.mov", "clip");
    const ScanResult result = scan({card.path()}, false, {});
    EXPECT_EQ(result.videos.value(0).url, clip);
    const QString sidecar = result.videos.value(0).sidecarURL.value_or(QString());
    return sidecar.mid(card.path().size() + 1).toStdString();
}

} // namespace

TEST_F(SourceScanTest, SortsEntriesAndSkipsHiddenEntriesAndToolFolders) {
    fill("b/2.MOV a.mp4 c.mxf b/1.mov b/clip.mov/in.mov "
         "b/node_modules/x.mov .hidden/x.mov .git/x.mov .x.mov");
    const std::string all = "a.mp4 b/1.mov b/2.MOV b/clip.mov/in.mov c.mxf";
    const ScanResult result = scan({folder.path()}, true, {});
    EXPECT_EQ(found(result), all);
    EXPECT_EQ(result.leftOut, LeftOut());
    EXPECT_EQ(result.videos.first().fileSizeBytes, 5U);
    EXPECT_EQ(result.videos.at(1).scanRoot.url, folder.path());
    EXPECT_FALSE(result.videos.first().contentHash);
    EXPECT_THAT(countingFiles.listCalls.values() + countingFiles.statusCalls.values(),
                testing::Each(1));
    EXPECT_EQ(found(scan({folder.path()}, false, {})), "a.mp4 c.mxf");
    countingFiles.hidesTypes = true;
    EXPECT_EQ(found(scan({folder.path()}, true, {})), all);
}

TEST_F(SourceScanTest, PairsAVideoWithTheSidecarOfItsStem) {
    EXPECT_EQ(sidecarAmong("A001M01.json A001.xmp A001.xml"), "A001.xml");
    EXPECT_EQ(sidecarAmong("A001.xml A001M01.XML"), "A001.xml");
    EXPECT_EQ(sidecarAmong("A001m02.Xml B.xml"), "A001m02.Xml");
    EXPECT_EQ(sidecarAmong("A001M01.json A001.txt"), "A001M01.json");
    EXPECT_EQ(sidecarAmong("A001M1.xml A001MAB.xml A001M001.xml A001.mov.xml a001.xml"), "");
}

TEST_F(SourceScanTest, CountsEntriesLeftOutByReason) {
    fill("a.mov a.xml b.xml notes.txt locked/x.mov replaced/x.mov elsewhere/notes.txt");
    folder.link("link.mov", at("a.mov"));
    folder.link("linked", at("elsewhere"));
    const QByteArray invalid = folder.path().toUtf8() + "/bad\xff.mov";
    ::close(::open(invalid.constData(), O_CREAT | O_WRONLY, 0600));
    const ScanResult result = scan({folder.path()}, true, {});
    ::unlink(invalid.constData()); // Qt cannot remove a file with an invalid name
    EXPECT_EQ(found(result), "a.mov");
    EXPECT_EQ(result.leftOut,
              (LeftOut{.notMedia = 3, .symbolicLinks = 2, .unreadable = 2, .invalidNames = 1}));
    EXPECT_THAT(
        result.unreadable,
        testing::ElementsAre(
            UnreadableEntry{at("locked"), QStringLiteral("Permission denied")},
            UnreadableEntry{at("replaced"), QStringLiteral("Too many levels of symbolic links")}));
}

TEST_F(SourceScanTest, ScansSingleFilesThroughTheirFolderAndFollowsALinkedRoot) {
    fill("card/a.mov card/a.xml card/b.mov card/notes.txt");
    const QString link = folder.link("link.mov", at("card/a.mov"));
    const ScanResult files = scan({at("card/b.mov"), at("card/./a.mov"), link, at("card/notes.txt"),
                                   at("card/gone.mov"), at("gone/x.mov")},
                                  false, {});
    EXPECT_EQ(found(files), "card/b.mov card/a.mov");
    EXPECT_EQ(files.videos.first().scanRoot.url, at("card"));
    EXPECT_EQ(files.videos.last().sidecarURL, at("card/a.xml"));
    EXPECT_EQ(files.videos.last().sidecarType, SidecarType::xml);
    EXPECT_EQ(files.leftOut, (LeftOut{.notMedia = 1, .symbolicLinks = 1, .unreadable = 2}));
    EXPECT_EQ(countingFiles.listCalls.value(at("card")), 1);

    const QString linked = folder.link("linked", at("card"));
    EXPECT_EQ(found(scan({linked}, true, {})), "linked/a.mov linked/b.mov");
}

TEST_F(SourceScanTest, ThrowsWhenCancelled) {
    fill("a.mov");
    std::stop_source task;
    task.request_stop();
    EXPECT_THROW(scan({folder.path()}, true, task.get_token()), Cancelled);
}
