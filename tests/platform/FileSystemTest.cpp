#include "platform/FileSystem.h"
#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <sys/stat.h>

using namespace corvane;
using corvane::test::FaultyFileSystem;
using corvane::test::TestFolder;

TEST(AtomicWrite, AFailureOfAnyCallOrALossOfPowerLeavesTheOldOrTheNewFileAndNoTemporaryFile) {
    const TestFolder folder;
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    const QByteArray before("the old content");
    const QByteArray after(100'000, 'n');
    const QString path = folder.write("file", before);
    faulty.failAt(0, 0);
    writeAtomically(path, after);
    const int calls = faulty.calls();
    ASSERT_GE(calls, 6);
    faulty.dropUnsynced();
    EXPECT_TRUE(folder.read("file") == after);
    for (int call = 1; call <= calls; ++call) {
        folder.write("file", before);
        faulty.failAt(call, EIO);
        EXPECT_THROW(writeAtomically(path, after), FileError) << "call " << call;
        faulty.dropUnsynced();
        const QByteArray left = folder.read("file");
        EXPECT_TRUE(left == before || (call == calls && left == after)) << "call " << call;
        EXPECT_TRUE(folder.temporaries().isEmpty()) << "call " << call;
    }
}

TEST(AtomicWrite, ReplacesTheTargetOfALinkAndKeepsItsPermissions) {
    const TestFolder folder;
    const QString target = folder.write("real/file", "old");
    ASSERT_EQ(::chmod(target.toUtf8().constData(), 0600), 0);
    const QString link = folder.link("link", target);
    writeAtomically(link, "new");
    EXPECT_EQ(folder.read("real/file"), "new");
    EXPECT_EQ(fileSystem().linkStatus(link)->type, FileType::SymbolicLink);
    EXPECT_EQ(fileSystem().linkStatus(target)->permissions, 0600U);
}

TEST(AtomicWrite, RefusesDanglingLinksAndFIFOs) {
    const TestFolder folder;
    const QString link = folder.link("away", folder.at("unmounted/file"));
    EXPECT_THROW(writeAtomically(link, "new"), FileError);
    EXPECT_EQ(fileSystem().linkStatus(link)->type, FileType::SymbolicLink);
    const QString fifo = folder.at("fifo");
    ASSERT_EQ(::mkfifo(fifo.toUtf8().constData(), 0600), 0);
    EXPECT_THROW(writeAtomically(fifo, "new"), FileError);
    EXPECT_EQ(fileSystem().linkStatus(fifo)->type, FileType::Other);
    EXPECT_TRUE(folder.temporaries().isEmpty());
}

TEST(FileSystem, RenamesOverNothingButARegularFileIfAtAll) {
    const TestFolder folder;
    const OpenFolder open = OpenFolder::at(folder.path());
    const auto rename = [&](const char *to, Placing placing) {
        folder.write("from", "mine");
        fileSystem().renameAt(open.descriptor(), QStringLiteral("from"), QString::fromLatin1(to),
                              placing);
    };
    folder.write("file", "theirs");
    folder.folder("folder");
    folder.link("link", folder.at("file"));
    for (const char *taken : {"file", "folder", "link"}) {
        EXPECT_THROW(rename(taken, Placing::mustBeFree), FileError) << taken;
        EXPECT_EQ(folder.read("file"), "theirs");
    }
    for (const char *taken : {"folder", "link"}) {
        EXPECT_THROW(rename(taken, Placing::mayReplaceRegular), FileError) << taken;
    }
    rename("file", Placing::mayReplaceRegular);
    rename("free", Placing::mustBeFree);
    EXPECT_EQ(folder.read("file") + folder.read("free"), "minemine");
    for (const char *name : {"", ".", "..", "a/b", "../a"}) {
        EXPECT_THROW(rename(name, Placing::mustBeFree), FileError) << name;
    }
}

TEST(OpenFolder, StaysTheSameFolderWhereverItsPathLeads) {
    const TestFolder folder;
    const OpenFolder open = OpenFolder::at(folder.folder("card"));
    EXPECT_TRUE(open.isAtItsPath());
    ASSERT_EQ(
        ::rename(folder.at("card").toUtf8().constData(), folder.at("away").toUtf8().constData()),
        0);
    EXPECT_FALSE(open.isAtItsPath());
    folder.link("card", folder.folder("other"));
    EXPECT_FALSE(open.isAtItsPath());
    writeAtomically(open.subfolder(QStringLiteral("inner")), QStringLiteral("a"), "bytes",
                    Placing::mustBeFree);
    EXPECT_EQ(folder.read("away/inner/a"), "bytes");
    EXPECT_EQ(readAll(open.subfolder(QStringLiteral("inner")).anchoredPath(QStringLiteral("a")), 9),
              "bytes");
    EXPECT_EQ(fileSystem().linkStatus(open.anchoredPath())->type, FileType::Directory);
    EXPECT_THAT(folder.names("other"), testing::IsEmpty());
    folder.link("away/link", folder.at("other"));
    folder.write("away/file", "");
    EXPECT_THROW((void)open.subfolder(QStringLiteral("link")), FileError);
    EXPECT_THROW((void)open.subfolder(QStringLiteral("file")), FileError);
}

TEST(FileSystem, CompletesShortWritesButGivesUpIfOnlyAFewBytesAreAccepted) {
    const TestFolder folder;
    const QByteArray bytes(100'000, 'n');
    const std::tuple<int, int, bool> cases[] = {
        {4'000, 100'000, true}, {1, 40, true}, {1, 100'000, false}, {0, 40, false}};
    for (const auto &[bytesPerWrite, length, isWritten] : cases) {
        FaultyFileSystem files;
        files.setBytesPerWrite(bytesPerWrite);
        const QString path = folder.write("file", {});
        const auto writeTwice = [&] {
            const Descriptor file = files.openForWriting(path);
            files.write(file, bytes.constData(), length);
            files.writeAt(file, length, bytes.constData(), length);
        };
        if (isWritten) {
            writeTwice();
            EXPECT_TRUE(folder.read("file") == bytes.left(length) + bytes.left(length));
        } else {
            EXPECT_THROW(writeTwice(), FileError);
        }
    }
}

TEST(FileSystem, FlagsNamesThatAreNotUtf8) {
    const TestFolder folder;
    const QByteArray raw = folder.path().toUtf8() + "/bad\xFF.mov";
    FILE *const file = std::fopen(raw.constData(), "w");
    ASSERT_NE(file, nullptr);
    std::fclose(file);
    folder.write("new\nline.mov", "x");
    const QList<DirectoryEntry> entries = fileSystem().list(folder.path());
    ASSERT_EQ(entries.size(), 2);
    for (const DirectoryEntry &entry : entries) {
        EXPECT_EQ(entry.hasValidName, entry.name == QStringLiteral("new\nline.mov"));
    }
}

TEST(FileSystem, RefusesAPathWithANul) {
    const QString path = QStringLiteral("/tmp/a") + QChar(u'\0') + QStringLiteral("b");
    EXPECT_FALSE(fileSystem().linkStatus(path));
    EXPECT_THROW(fileSystem().openForReading(path, FileSystem::Links::Follow), FileError);
}

TEST(FileSystem, CreatesFoldersButNotInPlaceOfAFile) {
    const TestFolder folder;
    fileSystem().createFolders(folder.at("a/b/c"));
    EXPECT_EQ(fileSystem().linkStatus(folder.at("a/b/c"))->type, FileType::Directory);
    folder.write("file", "x");
    EXPECT_THROW(fileSystem().createFolders(folder.at("file")), FileError);
    EXPECT_THROW(fileSystem().createFolders(folder.at("file/below")), FileError);
    EXPECT_EQ(folder.read("file"), "x");
}

TEST(Paths, ResolveLinksAsFarAsThePathExists) {
    const TestFolder folder;
    folder.folder("real");
    const QString link = folder.link("link", folder.at("real"));
    EXPECT_EQ(paths::resolvingLinks(link + QStringLiteral("/not/there")),
              folder.at("real/not/there"));
    EXPECT_EQ(paths::standardized(link + QStringLiteral("/x/../y//z")),
              link + QStringLiteral("/y/z"));
}

TEST(Paths, SplitNamesAtTheLastDot) {
    const auto split = [](const char *name) {
        const auto [stem, extension] = paths::split(QString::fromUtf8(name));
        return stem + QLatin1Char('|') + extension;
    };
    EXPECT_EQ(split("a.b.mov"), QStringLiteral("a.b|.mov"));
    EXPECT_EQ(split("take"), QStringLiteral("take|"));
    EXPECT_EQ(split(".hidden"), QStringLiteral("|.hidden"));
    EXPECT_FALSE(paths::isBelow(QStringLiteral("/a/bc/x"), QStringLiteral("/a/b")));
    EXPECT_FALSE(paths::isBelow(QStringLiteral("/a/b"), QStringLiteral("/a/b")));
    EXPECT_TRUE(paths::isBelow(QStringLiteral("/a"), QStringLiteral("/")));
}
