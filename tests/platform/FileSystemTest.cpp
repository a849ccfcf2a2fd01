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

TEST(FileSystem, RenameToFreeNameNeverReplacesAFile) {
    const TestFolder folder;
    const QString from = folder.write("from", "mine");
    const QString to = folder.write("to", "theirs");
    EXPECT_THROW(fileSystem().renameToFreeName(from, to), FileError);
    EXPECT_EQ(folder.read("to"), "theirs");
    EXPECT_EQ(folder.read("from"), "mine");
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
