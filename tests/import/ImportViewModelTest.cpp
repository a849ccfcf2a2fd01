#include "import/ImportTexts.h"
#include "ImportSheetFixture.h"
#include "support/TestMedia.h"
#include "trust/ContentHasher.h"

#include <QFile>

#include <cerrno>

using namespace corvane;
using corvane::test::await;
using corvane::test::FaultyFileSystem;

namespace {

using Stage = ImportViewModel::Stage;

/// Imports from a folder "cards".
class ImportViewModelTest : public test::ImportTest {
  protected:
    /// Writes files that contain their own paths. `paths` is separated by spaces.
    void fill(const char *paths) const {
        for (const QString &path : QString::fromLatin1(paths).split(QLatin1Char(' '))) {
            folder.write(path, path.toUtf8());
        }
    }
    void scanCards(SourceImportMode mode = SourceImportMode::inPlace) {
        import.setSources({at("cards")});
        import.setRecursive(true);
        import.setMode(mode);
        await(import.startScan());
        EXPECT_EQ(import.stage(), Stage::results);
    }
    void run() {
        await(import.beginImport());
        EXPECT_EQ(import.stage(), Stage::done);
    }
    const QList<VideoItem> &videos() const { return store.project()->videos; }
    std::string imported() const {
        QStringList names;
        for (const VideoItem &video : videos()) {
            names.append(video->fileName);
        }
        return names.join(QStringLiteral(", ")).toStdString();
    }
    /// Succeeded, failed, skipped, sidecars.
    QList<int> counters() const {
        const ImportResult &result = import.result();
        return {result.succeededCount, result.failedCount, result.skippedCount,
                result.sidecarsImportedCount};
    }
    QByteArray read(const char *name) const { return folder.read(name); }
    AuthorizedPaths grants() { return await(authorization.authorizedPaths(projectFile)); }
    /// Calls `action` at every progress of that row; the first row is 1.
    void atRow(int index, const std::function<void()> &action) {
        QObject::connect(&import, &ImportViewModel::progressChanged, &import, [=, this] {
            if (import.progress() && import.progress()->index == index) {
                action();
            }
        });
    }

    QString media = at("p/media");
};

} // namespace

TEST_F(ImportViewModelTest, ImportsInPlaceAsOneUndoStepThatIsGrantedAndSaved) {
    fill("cards/a/C1.MP4 cards/a/C1M01.XML cards/b/C2.MP4");
    const QString first = at("cards/a/C1.MP4");
    scanCards();
    run();
    ASSERT_EQ(imported(), "C1.MP4, C2.MP4");
    const VideoItem clip = videos().first();
    EXPECT_EQ(clip->sourcePath, first);
    EXPECT_EQ(clip->sidecarPath, at("cards/a/C1M01.XML"));
    EXPECT_FALSE(clip->originalSourcePath);
    EXPECT_EQ(import.result().importedVideoIds, (QStringList{clip->id, videos().last()->id}));
    EXPECT_EQ(counters(), (QList{2, 0, 0, 1}));
    EXPECT_EQ(store.project()->rootFolders, QStringList{at("cards")});
    EXPECT_TRUE(grants().value(first) && grants().value(first)->contentHash);
    await(store.flushPendingSave());
    EXPECT_EQ(ProjectFileIO::loadNow(projectFile).videos.size(), 2);
    store.undo();
    EXPECT_TRUE(videos().isEmpty());
}

TEST_F(ImportViewModelTest, AsksAboutClipsThatWereNotHashedBecauseOfACancellationOrAnError) {
    const QString second = at("cards/C2.MP4");
    const QString third = at("cards/C3.MP4");
    for (const bool isCancelled : {true, false}) {
        fill("cards/C1.MP4 cards/C2.MP4 cards/C3.MP4");
        FaultyFileSystem files;
        const FileSystemScope scope(files);
        scanCards();
        files.setObserver([&](const QString &operation, const QString &path) {
            if (operation == u"read" && path == second) {
                if (!isCancelled) {
                    throw FileError(path, EIO);
                }
                import.cancelImport();
            }
        });
        run();
        files.setObserver({});
        EXPECT_EQ(imported(), "C1.MP4, C2.MP4, C3.MP4");
        EXPECT_TRUE(grants().value(at("cards/C1.MP4")));
        const QStringList asked = store.mediaConfirmation().unresolvedMediaPendingPaths;
        EXPECT_EQ(asked, isCancelled ? (QStringList{second, third}) : QStringList{second});
        EXPECT_EQ(import.result().pendingCount, isCancelled ? 2 : 0);
        ASSERT_EQ(import.result().failures.size(), isCancelled ? 0 : 1);
        if (!isCancelled) {
            EXPECT_EQ(import.result().failures[0].filename, QStringLiteral("C2.MP4"));
            EXPECT_EQ(import.result().failures[0].message, unreadableClipText());
        }
        store.undo();
        await(authorization.forget(projectFile));
        await(store.refreshMediaConfirmationState());
        import.reset();
    }
}

TEST_F(ImportViewModelTest, WritesABackupBeforeItChangesTheProject) {
    fill("cards/1.mov");
    scanCards();
    run();
    const QStringList backups =
        folder.names(QStringLiteral("p")).filter(QStringLiteral(".corvane.bak"));
    ASSERT_EQ(backups.size(), 1);
    EXPECT_TRUE(ProjectFileIO::loadNow(at("p/") + backups.first()).videos.isEmpty());
    EXPECT_FALSE(import.result().backupError);

    fill("cards/2.mov");
    import.reset();
    scanCards();
    FaultyFileSystem files;
    const FileSystemScope scope(files);
    files.setObserver([this](const QString &operation, const QString &path) {
        if (operation == QLatin1String("createFileAt") && path.startsWith(at("p/.tmp"))) {
            throw FileError(path, ENOSPC);
        }
    });
    run();
    EXPECT_TRUE(import.result().backupError.value_or(QString()).startsWith(
        QStringLiteral("Backup failed: Backup write failed at ")));
    EXPECT_EQ(videos().size(), 2) << "a failed backup doesn't stop the import";
}

TEST_F(ImportViewModelTest, AsksForConfirmationOfSkippedClipsThatMayNotBeRead) {
    fill("cards/a/C1.MP4 cards/a/C2.MP4 cards/b/C3.MP4");
    scanCards();
    run();
    await(store.flushPendingSave());
    const auto again = [this] {
        import.reset();
        scanCards();
        EXPECT_FALSE(import.canBeginImport());
        return import.refusedCount();
    };
    EXPECT_EQ(again(), 0);
    const QString moved = at("p/moved.corvane");
    ASSERT_TRUE(QFile::copy(projectFile, moved));
    await(store.openProject(moved));
    await(authorization.authorize({at("cards/a/C2.MP4"), at("cards/b/C3.MP4")}, moved));
    ASSERT_TRUE(QFile::rename(at("cards/b"), at("replaced")));
    fill("cards/b/C3.MP4");
    EXPECT_EQ(again(), 2);
    EXPECT_EQ(store.mediaConfirmation().unresolvedMediaPendingPaths,
              QStringList{at("cards/a/C1.MP4")});
    EXPECT_EQ(store.mediaConfirmation().contentMismatchPendingPaths,
              QStringList{at("cards/b/C3.MP4")});
    EXPECT_TRUE(await(authorization.authorizedPaths(moved)).value(at("cards/b/C3.MP4")));
    await(store.confirmUnresolvedMedia());
    await(store.trustChangedContents());
    EXPECT_EQ(again(), 0);
}

TEST_F(ImportViewModelTest, AsksAboutAChangeThatTheDuplicateKeyDoesNotCover) {
    QByteArray bytes(3 << 20, 'a');
    const QString clip = folder.write("cards/C1.MP4", bytes);
    scanCards();
    run();
    bytes[(1 << 20) + 7] = 'b';
    folder.write("cards/C1.MP4", bytes);
    QFile file(clip);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) &&
                file.setFileTime(clock.now().addSecs(1), QFileDevice::FileModificationTime));
    import.reset();
    scanCards();
    EXPECT_EQ(import.refusedCount(), 1);
    EXPECT_EQ(store.mediaConfirmation().contentMismatchPendingPaths, QStringList{clip});
}

TEST_F(ImportViewModelTest, CopiesEquallyNamedClipsOfTwoCardsWithTheirSidecars) {
    fill("cards/a/C1.MP4 cards/a/C1M01.XML cards/b/C1.MP4 cards/b/C1M01.XML");
    scanCards(SourceImportMode::copied);
    clock.advance(std::chrono::hours(1));
    quint64 bytesOfSecond = 0;
    atRow(2, [&] { bytesOfSecond = std::max(bytesOfSecond, import.progress()->bytesDone); });
    run();
    EXPECT_EQ(bytesOfSecond, read("cards/b/C1.MP4").size());
    EXPECT_EQ(read("p/media/C1.MP4"), "cards/a/C1.MP4");
    EXPECT_EQ(read("p/media/C1M01.XML"), "cards/a/C1M01.XML");
    EXPECT_EQ(read("p/media/C1 (2).MP4"), "cards/b/C1.MP4");
    EXPECT_EQ(read("p/media/C1 (2)M01.XML"), "cards/b/C1M01.XML");
    ASSERT_EQ(videos().size(), 2);
    const VideoItem clip = videos().last();
    const QString source = at("cards/b/C1.MP4");
    EXPECT_EQ(*clip, (VideoRecord{.id = clip->id,
                                  .sourcePath = media + QStringLiteral("/C1 (2).MP4"),
                                  .sourceImportMode = SourceImportMode::copied,
                                  .originalSourcePath = source,
                                  .fileName = QStringLiteral("C1 (2).MP4"),
                                  .parentFolder = media,
                                  .fileSizeBytes = read("cards/b/C1.MP4").size(),
                                  .sidecarPath = media + QStringLiteral("/C1 (2)M01.XML"),
                                  .sidecarType = SidecarType::xml,
                                  .contentHash = ContentHasher::duplicateKey(source),
                                  .createdAt = clock.now(),
                                  .updatedAt = clock.now()}));
    EXPECT_EQ(store.project()->updatedAt, clock.now());
    EXPECT_TRUE(grants().value(clip->sourcePath));
    EXPECT_TRUE(await(authorization.isMediaRootAuthorized(media, projectFile)));
}

TEST_F(ImportViewModelTest, ContinuesAfterAFailedRowAndKeepsAVideoWithoutItsSidecar) {
    fill("cards/a.mov cards/a.xml cards/b.mov cards/c.mov cards/d.mov");
    scanCards(SourceImportMode::copied);
    ASSERT_TRUE(QFile::remove(at("cards/a.xml")));
    folder.folder("p/media/b.mov");
    fill("p/media/c.mov");
    import.togglePreviewRow(import.previewRows().last().id);
    run();
    EXPECT_EQ(imported(), "a.mov, c (2).mov");
    EXPECT_EQ(read("p/media/c.mov"), "p/media/c.mov");
    EXPECT_FALSE(videos().first()->sidecarPath);
    ASSERT_EQ(import.result().failures.size(), 2);
    EXPECT_EQ(import.result().failures.first(),
              (ImportFailure{QStringLiteral("sidecar: a.xml"),
                             QStringLiteral("Cannot read a.xml: No such file or directory")}));
    EXPECT_EQ(counters(), (QList{2, 1, 1, 0}));
}

TEST_F(ImportViewModelTest, FailsIfTheDestinationIsALinkToAFolder) {
    fill("cards/a.mov");
    folder.link("p/media", folder.folder("elsewhere"));
    scanCards(SourceImportMode::copied);
    run();
    ASSERT_EQ(import.result().failures.size(), 1);
    EXPECT_THAT(import.result().failures.first().message.toStdString(),
                testing::StartsWith("Cannot write to media: "));
    EXPECT_TRUE(videos().isEmpty());
    EXPECT_FALSE(store.canUndo());
    EXPECT_THAT(folder.names("elsewhere"), testing::IsEmpty());
}

TEST_F(ImportViewModelTest, KeepsTheRowsBeforeTheCancelledOne) {
    fill("cards/1.mov cards/2.mov cards/3.mov cards/4.mov cards/5.mov");
    scanCards(SourceImportMode::copied);
    atRow(3, [&] {
        import.reset();
        EXPECT_EQ(import.stage(), Stage::importing);
        import.cancelImport();
    });
    run();
    EXPECT_EQ(imported(), "1.mov, 2.mov");
    EXPECT_EQ(folder.names("p/media").size(), 2);
    EXPECT_EQ(grants().size(), 2);
    EXPECT_EQ(counters(), (QList{2, 0, 0, 0}));
}

TEST_F(ImportViewModelTest, RemovesTheVideoIfItsSidecarIsCancelled) {
    fill("cards/a.mov cards/a.xml");
    scanCards(SourceImportMode::copied);
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    std::stop_source task;
    faulty.setObserver([&](const QString &operation, const QString &path) {
        if (operation == QLatin1String("openFileAt") && path == QLatin1String("a.xml")) {
            task.request_stop();
        }
    });
    EXPECT_THROW(RowImport::copyFiles(import.previewRows().first(),
                                      RowImport::openDestination(media), {}, task.get_token()),
                 Cancelled);
    EXPECT_THAT(folder.names("p/media"), testing::IsEmpty());
}

TEST_F(ImportViewModelTest, AddsNoClipsToAnotherProject) {
    fill("cards/a.mov cards/b.mov");
    scanCards(SourceImportMode::copied);
    std::optional<QCoro::Task<>> creating;
    atRow(1, [&] {
        if (!creating) {
            creating =
                store.createProject({.name = QStringLiteral("Other")}, at("p/other.corvane"));
        }
    });
    test::BlockedCopy blocked(QStringLiteral("a.mov"));
    QObject::connect(&store, &ProjectStore::fileURLChanged, &import, [&] { blocked.resume(); });
    run();
    await(std::move(*creating));
    EXPECT_TRUE(videos().isEmpty());
    EXPECT_TRUE(grants().isEmpty());
    EXPECT_EQ(counters(), (QList{0, 2, 0, 0}));
}

TEST_F(ImportViewModelTest, BuildsThePreviewForTheOpenProjectAndTheChoices) {
    fill("cards/a.mov");
    scanCards();
    run();
    import.reset();
    EXPECT_EQ(counters(), (QList{0, 0, 0, 0}));
    EXPECT_FALSE(import.canScan());
    fill("cards/b.mov");
    scanCards();
    EXPECT_EQ(import.previewRows().first().status, CollisionStatus::alreadyImported);
    EXPECT_EQ(import.includedCount(), 1);
    import.togglePreviewRow(import.previewRows().first().id);
    import.togglePreviewRow(import.previewRows().last().id);
    EXPECT_EQ(import.includedCount(), 0);
    EXPECT_FALSE(import.canBeginImport());
    await(import.beginImport());
    EXPECT_EQ(import.stage(), Stage::results);
    import.setMode(SourceImportMode::copied);
    EXPECT_EQ(import.includedCount(), 1);
    import.setDestinationFolder(at("cards"));
    EXPECT_EQ(import.previewRows().last().proposedName, QStringLiteral("b (2).mov"));
    import.backToSources();
    FaultyFileSystem faulty;
    const FileSystemScope scope(faulty);
    faulty.setObserver([](const QString &operation, const QString &path) {
        if (operation == QLatin1String("openForReading") &&
            path.endsWith(QLatin1String("/a.mov"))) {
            throw FileError(path, EIO);
        }
    });
    await(import.startScan());
    EXPECT_EQ(import.destinationFolder(), at("cards")) << "chosen before";
    EXPECT_EQ(import.includedCount(), 2) << "a file that cannot be hashed counts as new";
    EXPECT_TRUE(import.canBeginImport());
    await(store.createProject({.name = QStringLiteral("Other")}, at("p/other.corvane")));
    EXPECT_FALSE(import.canBeginImport()) << "scanned for another project";
}

TEST_F(ImportViewModelTest, DiscardsACancelledScanAndStopsWhenDestroyed) {
    fill("cards/a.mov");
    import.setSources({at("cards")});
    auto cancelled = import.startScan();
    EXPECT_EQ(import.stage(), Stage::scanning);
    import.cancelScan();
    EXPECT_EQ(import.stage(), Stage::sources);
    await(std::move(cancelled));
    EXPECT_TRUE(import.scannedVideos().isEmpty());

    auto gone = std::make_unique<ImportViewModel>(&store);
    gone->setSources({at("cards")});
    auto scanning = gone->startScan();
    gone.reset();
    await(std::move(scanning));
}

TEST_F(ImportViewModelTest, AddsMetadataToClipsWithoutLosingLaterEdits) {
    const QString first = folder.folder("cards") + QStringLiteral("/a.mp4");
    test::makeClip(first);
    test::makeClip(at("cards/b.mp4"));
    test::makeClip(at("cards/c.mp4"));
    QStringList passes;
    QObject::connect(&import, &ImportViewModel::progressChanged, &import, [&] {
        const QString name = import.progress() ? import.progress()->currentFilename : QString();
        if (!name.startsWith(QStringLiteral("Reading metadata: "))) {
            return;
        }
        passes.append(name);
        if (passes.size() == 1) {
            store.setRating(videos().first()->id, 4);
        } else {
            import.cancelImport();
        }
    });
    scanCards();
    run();
    EXPECT_EQ(passes, (QStringList{QStringLiteral("Reading metadata: a.mp4"),
                                   QStringLiteral("Reading metadata: b.mp4")}));
    const VideoItem clip = videos().first();
    EXPECT_EQ(clip->rating, 4);
    EXPECT_EQ(clip->durationSeconds, 2);
    EXPECT_EQ(clip->thumbnailPath, QStringLiteral("thumbnails/%1.jpg").arg(clip->id));
    EXPECT_TRUE(folder.has(QStringLiteral("p/.corvane-cache/") + *clip->thumbnailPath));
    EXPECT_EQ(videos().at(1)->durationSeconds, 2); // already being read when the run was cancelled
    EXPECT_EQ(videos().at(2)->durationSeconds, 0);
    await(store.flushPendingSave());
    EXPECT_EQ(ProjectFileIO::loadNow(projectFile).videos, videos());
    store.undo(); // the rating
    store.undo(); // the import
    EXPECT_TRUE(videos().isEmpty());
}
