#include "transfer/ImportCopier.h"

#include "transfer/TransferFixture.h"
#include "trust/ContentHasher.h"
#include "trust/PathSafety.h"

#include <QDir>

#include <cerrno>
#include <sys/stat.h>

using namespace corvane;
using namespace corvane::test;
using ImportCopier::CopyError;
using ImportCopier::SourceRoot;

namespace {

using CopyKind = CopyError::Kind;

/// A card with one clip of several blocks, and a destination that contains an older file.
class ImportCopierTest : public TransferTest {
  protected:
    SourceRoot root() const { return {at("card"), PathSafety::folderIdentity(at("card"))}; }
    SourceRoot rootWithAnchor(const QString &anchor) const {
        SourceRoot anchored = root();
        anchored.identity->contentHash = anchor;
        return anchored;
    }
    Destination into(const QString &file) const {
        return Destination::below(out, file, Placing::mayReplaceRegular);
    }
    void copy(const std::optional<SourceRoot> &through) const {
        ImportCopier::copy(source, into(destination), through, {}, {});
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
    void expectOldDestination() const {
        EXPECT_EQ(delivered("clip.mov"), "older");
        expectNoTemporaries();
    }

    QByteArray bytes = noise((qsizetype(3) << 20) + 5);
    QString source = folder.write("card/DCIM/clip.mov", bytes);
    QString destination = folder.write("out/clip.mov", "older");
    OpenFolder out = OpenFolder::at(at("out"));
};

qsizetype openDescriptors() {
    return QDir(text("/proc/self/fd")).count();
}

/// The error kind if an operation other than syncing the destination's folder fails.
CopyKind failureKind(const QString &operation) {
    if (operation.startsWith(text("open")) || operation == text("read")) {
        return CopyKind::sourceUnreadable;
    }
    return operation.startsWith(text("create")) ? CopyKind::destinationUnwritable
           : operation == text("renameAt")      ? CopyKind::renameFailed
                                                : CopyKind::writeFailed;
}

} // namespace

TEST_F(ImportCopierTest, CopiesExactlyTheBytesOfTheSourceAndReportsProgress) {
    SourceRoot remounted = root();
    remounted.identity->device += 1;
    QList<quint64> reported;
    ImportCopier::copy(source, into(at("out/new/folder/clip.mov")), remounted,
                       [&](quint64 done) { reported.append(done); }, {});
    EXPECT_EQ(folder.read("out/new/folder/clip.mov"), bytes);
    EXPECT_TRUE(std::ranges::is_sorted(reported));
    EXPECT_EQ(reported.last(), quint64(bytes.size()));

    copy(std::nullopt);
    EXPECT_EQ(delivered("clip.mov"), bytes);
    expectNoTemporaries();
}

TEST_F(ImportCopierTest, LeavesTheDestinationUnchangedWhicheverOperationFails) {
    const QString anchor = ContentHasher::makeAnchor(source);
    std::pair<QString, QString> last;
    files.setObserver(
        [&](const QString &operation, const QString &path) { last = {operation, path}; });
    const auto failureAt = [&](int call) {
        const SourceRoot unopened = rootWithAnchor(anchor);
        files.failAt(call, EIO);
        return failure(unopened);
    };
    EXPECT_EQ(failureAt(0), std::nullopt);
    const int calls = files.calls();
    ASSERT_GT(calls, 15);
    const qsizetype descriptors = openDescriptors();
    for (int call = 1; call <= calls; ++call) {
        folder.write("out/clip.mov", "older");
        const auto failed = failureAt(call);
        SCOPED_TRACE(last.first.toStdString());
        // After the rename only the folder's sync can fail, and the destination is complete.
        const bool isRenamed = last.first == QLatin1String("syncFolder");
        EXPECT_EQ(failed, isRenamed ? CopyKind::renameFailed : failureKind(last.first));
        EXPECT_EQ(delivered("clip.mov"), isRenamed ? bytes : QByteArray("older"));
        EXPECT_EQ(openDescriptors(), descriptors);
    }
    EXPECT_EQ(folder.read("card/DCIM/clip.mov"), bytes);
    expectNoTemporaries();
}

TEST_F(ImportCopierTest, RefusesARootThatIsNotTheScannedFolder) {
    files.setVolumeUUID(text("volume-1"));
    const SourceRoot scanned = root();
    files.setVolumeUUID(text("volume-2"));
    EXPECT_EQ(failure(scanned), CopyKind::sourceRootChanged);
    files.setVolumeUUID(std::nullopt);
    EXPECT_EQ(failure(scanned), std::nullopt);

    folder.write("out/clip.mov", "older");
    ASSERT_TRUE(QDir().rename(scanned.path, at("away")));
    folder.write("card/DCIM/clip.mov", "another card");
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
    folder.link("card/DCIM/clip.mov", kept);
    EXPECT_EQ(failure(scanned), CopyKind::sourceUnreadable);
    EXPECT_EQ(failure(std::nullopt), CopyKind::sourceUnreadable);

    ASSERT_TRUE(QFile::remove(source));
    ASSERT_EQ(::mkfifo(source.toUtf8().constData(), 0600), 0);
    EXPECT_EQ(failure(scanned), CopyKind::sourceNotARegularFile);
    ASSERT_TRUE(QFile::remove(source));
    folder.folder("card/DCIM/clip.mov");
    EXPECT_EQ(failure(scanned), CopyKind::sourceNotARegularFile);

    folder.write("elsewhere/clip.mov", bytes);
    ASSERT_TRUE(QDir(at("card/DCIM")).removeRecursively());
    folder.link("card/DCIM", at("elsewhere"));
    EXPECT_EQ(failure(scanned), CopyKind::sourceUnreadable);
    expectOldDestination();
}

TEST_F(ImportCopierTest, ReplacesOnlyARegularFile) {
    ASSERT_TRUE(QFile::remove(destination));
    folder.write("out/clip.mov/kept.txt", "kept");
    EXPECT_EQ(failure(root()), CopyKind::destinationIsNotAFile);
    ASSERT_TRUE(QDir(destination).removeRecursively());
    folder.link("out/clip.mov", source);
    EXPECT_EQ(failure(root()), CopyKind::destinationIsNotAFile);
    EXPECT_EQ(folder.names("out"), QStringList{text("clip.mov")});
}

TEST_F(ImportCopierTest, LeavesNoTemporaryFileWhenCancelled) {
    const SourceRoot anchored = rootWithAnchor(ContentHasher::makeAnchor(source));
    for (const auto &through : {root(), anchored}) {
        std::stop_source task;
        const auto stopAtOnce = [&](quint64) { task.request_stop(); };
        EXPECT_THROW(
            ImportCopier::copy(source, into(destination), through, stopAtOnce, task.get_token()),
            Cancelled);
        expectOldDestination();
    }
}

TEST_F(ImportCopierTest, CopiesOnlyTheBytesThatMatchTheAnchor) {
    const SourceRoot anchored = rootWithAnchor(ContentHasher::makeAnchor(source));
    EXPECT_EQ(failure(rootWithAnchor(text("no anchor"))), std::nullopt);
    EXPECT_EQ(failure(anchored), std::nullopt);

    folder.write("out/clip.mov", "older");
    QByteArray changed = bytes;
    changed.back() = char(changed.back() + 1);
    folder.write("card/DCIM/clip.mov", changed);
    EXPECT_EQ(failure(anchored), CopyKind::sourceContentChanged);
    expectOldDestination();

    folder.write("card/DCIM/clip.mov", bytes);
    files.setObserver([&](const QString &operation, const QString &) {
        if (operation == QLatin1String("write")) {
            QFile::resize(source, qint64(2) << 20);
        }
    });
    EXPECT_EQ(failure(anchored), CopyKind::sourceContentChanged);
    expectOldDestination();
    EXPECT_EQ(failure(root()), std::nullopt);
    EXPECT_EQ(delivered("clip.mov"), bytes.left(qsizetype(2) << 20));
}

TEST_F(ImportCopierTest, VerifiesThePrivateCopyThatSharesTheBytesOfItsSource) {
    files.setCanShareBytes(true);
    files.setFreeSpace(0);
    const SourceRoot anchored = rootWithAnchor(ContentHasher::makeAnchor(source));
    const auto copyPrivately = [&] {
        ImportCopier::copy(source, into(destination), anchored, {}, {}, {.isPrivate = true});
    };
    copyPrivately();
    EXPECT_EQ(delivered("clip.mov"), bytes);
    EXPECT_EQ(files.sharedFiles(), 1);
    EXPECT_EQ(fileSystem().linkStatus(destination)->permissions, 0600U);
    folder.write("out/clip.mov", "older");
    folder.write("card/DCIM/clip.mov", "changed");
    EXPECT_THROW(copyPrivately(), CopyError);
    expectOldDestination();
    files.setCanShareBytes(false);
    EXPECT_THROW(copyPrivately(), CopyError) << "no space";
    expectOldDestination();
}
