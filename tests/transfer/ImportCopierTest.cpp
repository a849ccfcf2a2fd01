#include "transfer/ImportCopier.h"

#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"
#include "trust/ContentHasher.h"
#include "trust/PathSafety.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QHash>

#include <cerrno>
#include <sys/stat.h>

using namespace corvane;
using corvane::ImportCopier::CopyError;
using corvane::ImportCopier::SourceRoot;
using corvane::test::FaultyFileSystem;
using corvane::test::noise;
using corvane::test::TestFolder;

namespace {

using CopyKind = CopyError::Kind;

/// A card with one clip of several blocks, and a destination that contains an older file.
class ImportCopierTest : public testing::Test {
  protected:
    SourceRoot root() const {
        const QString card = at("card");
        return {card, PathSafety::folderIdentity(card)};
    }
    SourceRoot rootWithAnchor(const QString &anchor) const {
        SourceRoot anchored = root();
        anchored.identity->contentHash = anchor;
        return anchored;
    }
    void copy(const std::optional<SourceRoot> &through) const {
        ImportCopier::copy(source, destination, through, {}, {});
    }
    /// The kind of failure, or nullopt if the copy succeeds.
    std::optional<CopyKind> failure(const std::optional<SourceRoot> &through) const {
        try {
            copy(through);
        } catch (const CopyError &error) {
            return error.kind();
        }
        return std::nullopt;
    }
    QString at(const char *name) const { return folder.at(QString::fromLatin1(name)); }
    QByteArray copied() const { return folder.read(QStringLiteral("out/clip.mov")); }
    void expectOldDestination() const {
        EXPECT_EQ(copied(), "older");
        EXPECT_THAT(folder.temporaries(), testing::IsEmpty());
    }

    TestFolder folder;
    QByteArray bytes = noise((qsizetype(3) << 20) + 5);
    QString source = folder.write(QStringLiteral("card/DCIM/clip.mov"), bytes);
    QString destination = folder.write(QStringLiteral("out/clip.mov"), "older");
};

qsizetype openDescriptors() {
    return QDir(QStringLiteral("/proc/self/fd")).count();
}

/// The error kind for each failing operation, except for syncing the destination's folder.
const QHash<QString, CopyKind> kErrorKinds{
    {QStringLiteral("createFolders"), CopyKind::destinationUnwritable},
    {QStringLiteral("openFolder"), CopyKind::sourceUnreadable},
    {QStringLiteral("openFolderAt"), CopyKind::sourceUnreadable},
    {QStringLiteral("openFileAt"), CopyKind::sourceUnreadable},
    {QStringLiteral("read"), CopyKind::sourceUnreadable},
    {QStringLiteral("createForWriting"), CopyKind::destinationUnwritable},
    {QStringLiteral("write"), CopyKind::writeFailed},
    {QStringLiteral("sync"), CopyKind::writeFailed},
    {QStringLiteral("close"), CopyKind::writeFailed},
    {QStringLiteral("rename"), CopyKind::renameFailed}};

} // namespace

TEST_F(ImportCopierTest, CopiesExactlyTheBytesOfTheSourceAndReportsProgress) {
    SourceRoot remounted = root();
    remounted.identity->device += 1;
    const QString fresh = at("new/folder/clip.mov");
    QList<quint64> reported;
    ImportCopier::copy(source, fresh, remounted, [&](quint64 done) { reported.append(done); }, {});
    EXPECT_EQ(folder.read(QStringLiteral("new/folder/clip.mov")), bytes);
    EXPECT_TRUE(std::ranges::is_sorted(reported));
    EXPECT_EQ(reported.last(), quint64(bytes.size()));

    copy(std::nullopt);
    EXPECT_EQ(copied(), bytes);
    EXPECT_THAT(folder.temporaries(), testing::IsEmpty());
}

TEST_F(ImportCopierTest, LeavesTheDestinationUnchangedWhicheverOperationFails) {
    const SourceRoot anchored = rootWithAnchor(ContentHasher::makeAnchor(source));
    const QString out = at("out");
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    std::pair<QString, QString> last;
    faulty.setObserver(
        [&](const QString &operation, const QString &path) { last = {operation, path}; });
    copy(anchored);
    const int calls = faulty.calls();
    ASSERT_GT(calls, 15);
    const qsizetype descriptors = openDescriptors();
    for (int call = 1; call <= calls; ++call) {
        folder.write(QStringLiteral("out/clip.mov"), "older");
        faulty.failAt(call, EIO);
        const auto failed = failure(anchored);
        SCOPED_TRACE(last.first.toStdString());
        // After the rename only the folder's sync can fail, and the destination is complete.
        const bool isRenamed = last.second == out && last.first != QLatin1String("createFolders");
        EXPECT_EQ(failed, isRenamed ? CopyKind::renameFailed : kErrorKinds.value(last.first));
        EXPECT_EQ(copied(), isRenamed ? bytes : QByteArray("older"));
        EXPECT_EQ(openDescriptors(), descriptors);
    }
    EXPECT_EQ(folder.read(QStringLiteral("card/DCIM/clip.mov")), bytes);
    EXPECT_THAT(folder.temporaries(), testing::IsEmpty());
}

TEST_F(ImportCopierTest, RefusesARootThatIsNotTheScannedFolder) {
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    faulty.setVolumeUUID(QStringLiteral("volume-1"));
    const SourceRoot scanned = root();
    faulty.setVolumeUUID(QStringLiteral("volume-2"));
    EXPECT_EQ(failure(scanned), CopyKind::sourceRootChanged);
    faulty.setVolumeUUID(std::nullopt);
    EXPECT_EQ(failure(scanned), std::nullopt);

    folder.write(QStringLiteral("out/clip.mov"), "older");
    ASSERT_TRUE(QDir().rename(scanned.path, at("away")));
    folder.write(QStringLiteral("card/DCIM/clip.mov"), "another card");
    EXPECT_EQ(failure(scanned), CopyKind::sourceRootChanged);
    expectOldDestination();
    for (const char *outside : {"car", "card/DCIM/clip.mov", "card/../card/D"}) {
        EXPECT_EQ(failure(SourceRoot{at(outside), {}}), CopyKind::sourceOutsideScanRoot);
    }
    expectOldDestination();
    EXPECT_EQ(failure(SourceRoot{scanned.path, {}}), std::nullopt);
}

TEST_F(ImportCopierTest, CopiesOnlyRegularFilesAndFollowsNoLinks) {
    const SourceRoot scanned = root();
    const QString kept = at("card/kept.mov");
    ASSERT_TRUE(QFile::rename(source, kept));
    folder.link(QStringLiteral("card/DCIM/clip.mov"), kept);
    EXPECT_EQ(failure(scanned), CopyKind::sourceUnreadable);
    EXPECT_EQ(failure(std::nullopt), CopyKind::sourceUnreadable);

    ASSERT_TRUE(QFile::remove(source));
    ASSERT_EQ(::mkfifo(source.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(failure(scanned), CopyKind::sourceNotARegularFile);
    ASSERT_TRUE(QFile::remove(source));
    folder.folder(QStringLiteral("card/DCIM/clip.mov"));
    EXPECT_EQ(failure(scanned), CopyKind::sourceNotARegularFile);

    folder.write(QStringLiteral("elsewhere/clip.mov"), bytes);
    ASSERT_TRUE(QDir(at("card/DCIM")).removeRecursively());
    folder.link(QStringLiteral("card/DCIM"), at("elsewhere"));
    EXPECT_EQ(failure(scanned), CopyKind::sourceUnreadable);
    expectOldDestination();
}

TEST_F(ImportCopierTest, ReplacesOnlyARegularFile) {
    ASSERT_TRUE(QFile::remove(destination));
    folder.write(QStringLiteral("out/clip.mov/kept.txt"), "kept");
    EXPECT_EQ(failure(root()), CopyKind::destinationIsNotAFile);
    ASSERT_TRUE(QDir(destination).removeRecursively());
    folder.link(QStringLiteral("out/clip.mov"), source);
    EXPECT_EQ(failure(root()), CopyKind::destinationIsNotAFile);
    EXPECT_EQ(folder.names(QStringLiteral("out")), QStringList{QStringLiteral("clip.mov")});
}

TEST_F(ImportCopierTest, LeavesNoTemporaryFileWhenCancelled) {
    const SourceRoot anchored = rootWithAnchor(ContentHasher::makeAnchor(source));
    for (const auto &through : {root(), anchored}) {
        std::stop_source task;
        const auto stopAtOnce = [&](quint64) { task.request_stop(); };
        EXPECT_THROW(ImportCopier::copy(source, destination, through, stopAtOnce, task.get_token()),
                     Cancelled);
        expectOldDestination();
    }
}

TEST_F(ImportCopierTest, CopiesOnlyTheBytesThatMatchTheAnchor) {
    const SourceRoot anchored = rootWithAnchor(ContentHasher::makeAnchor(source));
    EXPECT_EQ(failure(rootWithAnchor(QStringLiteral("no anchor"))), std::nullopt);
    EXPECT_EQ(failure(anchored), std::nullopt);

    folder.write(QStringLiteral("out/clip.mov"), "older");
    QByteArray changed = bytes;
    changed.back() = char(changed.back() + 1);
    folder.write(QStringLiteral("card/DCIM/clip.mov"), changed);
    EXPECT_EQ(failure(anchored), CopyKind::sourceContentChanged);
    expectOldDestination();

    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    folder.write(QStringLiteral("card/DCIM/clip.mov"), bytes);
    faulty.setObserver([&](const QString &operation, const QString &) {
        if (operation == QLatin1String("write")) {
            QFile::resize(source, qint64(2) << 20);
        }
    });
    EXPECT_EQ(failure(anchored), CopyKind::sourceContentChanged);
    expectOldDestination();
    EXPECT_EQ(failure(root()), std::nullopt);
    EXPECT_EQ(copied(), bytes.left(qsizetype(2) << 20));
}
