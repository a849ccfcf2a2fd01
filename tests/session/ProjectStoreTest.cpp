#include "session/ProjectStore.h"
#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/SampleProject.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <cerrno>

using namespace corvane;
using namespace corvane::test;
using namespace std::chrono_literals;

namespace {

class ProjectStoreTest : public testing::Test {
  protected:
    QString make(QAnyStringView name, const Project &project) {
        const QString path = folder.at(name);
        await(ProjectFileIO().save(project, path, false));
        return path;
    }
    /// Opens the project and saves what opening changes.
    void open() {
        await(store.openProject(file));
        await(store.flushPendingSave());
    }
    void settle() {
        waitUntil([this] { return !store.isSaving(); });
    }
    Project onDisk(const QString &path) const { return ProjectFileIO::loadNow(path); }
    QString error() const {
        return store.lastError() ? store.lastError()->description() : QString();
    }

    TestFolder folder;
    FaultyFileSystem files;
    FileSystemScope scope{files};
    TestClock clock;
    ProjectFileIO io;
    ProjectRegistry registry{folder.at("data"), clock};
    BackupService backups{clock};
    MediaSourceAuthorization authorization{folder.at("data")};
    ProjectStore store{io, registry, backups, authorization, clock};
    QString file = make("Harbor.corvane", sampleProject(3, 1));
    const QString clip = QStringLiteral("clip-0");
    const SubclipKey subclip{QStringLiteral("clip-0"), QStringLiteral("clip-0-sub-0")};
};

} // namespace

TEST_F(ProjectStoreTest, KeepsTheOpenProjectIfOpeningAnotherFails) {
    open();
    store.setRating(clip, 3);
    const QString bad = folder.write("bad.corvane", "{");
    await(store.openProject(bad));
    EXPECT_EQ(error(),
              QStringLiteral("Open failed: %1 is not a valid `.corvane` JSON document.").arg(bad));
    EXPECT_EQ(store.fileURL(), file);
    EXPECT_TRUE(store.canUndo());
    EXPECT_EQ(store.recentProjects().size(), 1);
    await(store.openProject(file));
    EXPECT_FALSE(store.lastError());
    EXPECT_FALSE(store.canUndo());
    EXPECT_EQ(store.project()->videos.at(0)->rating, 3) << "reopening reads the saved edits";
}

TEST_F(ProjectStoreTest, SavesTheOpenProjectBeforeOpeningAnother) {
    const QString other = make("Other.corvane", sampleProject(1));
    open();
    store.setNotes(clip, QStringLiteral("typed"));
    files.setFreeSpace(0);
    await(store.openProject(other));
    EXPECT_EQ(store.fileURL(), file);
    EXPECT_EQ(error(),
              QStringLiteral("Save failed: Failed to write %1: No space left on device").arg(file));
    await(store.closeProject());
    EXPECT_TRUE(store.project()) << "unsaved edits are not discarded";
    files.setFreeSpace(-1);
    await(store.openProject(other));
    EXPECT_EQ(store.fileURL(), other);
    EXPECT_EQ(onDisk(file).videos.at(0)->notes, QStringLiteral("typed"));
}

TEST_F(ProjectStoreTest, KeepsEditsMadeWhileAProjectIsReopened) {
    open();
    auto first = store.openProject(file);
    auto second = store.openProject(file);
    store.setNotes(clip, QStringLiteral("typed"));
    await(std::move(first));
    await(std::move(second));
    EXPECT_EQ(store.project()->videos.at(0)->notes, QStringLiteral("typed"));
    store.setRating(clip, 1);
    await(store.flushPendingSave());
    EXPECT_EQ(onDisk(file).videos.at(0)->notes, QStringLiteral("typed"));
}

TEST_F(ProjectStoreTest, CanBeClosedWhileAProjectOpens) {
    QCoro::Task<> closing;
    QObject::connect(&store, &ProjectStore::recentProjectsChanged, &store,
                     [&] { closing = store.closeProject(); });
    await(store.openProject(file));
    await(std::move(closing));
    EXPECT_FALSE(store.project());
    QObject::connect(&store, &ProjectStore::projectChanged, &store, [&] {
        if (store.project()) {
            closing = store.closeProject();
        }
    });
    await(store.openProject(file));
    EXPECT_FALSE(store.project());
}

TEST_F(ProjectStoreTest, IgnoresADocumentOfAnotherProject) {
    Project other = sampleProject(9);
    store.updateProject(other);
    EXPECT_FALSE(store.project());
    await(store.openProject(file));
    other.id = QStringLiteral("another");
    store.updateProject(other);
    EXPECT_EQ(store.project()->videos.size(), 3);
}

TEST_F(ProjectStoreTest, MigratesReviewedFlagsOfOldProjectsOnOpening) {
    Project project = sampleProject(2);
    project.videos[1].edit().rating = 4;
    const QString old = make("Old.corvane", project);
    await(store.openProject(old));
    EXPECT_TRUE(store.isDirty());
    EXPECT_EQ(store.statusMessage(), QStringLiteral("Migrated reviewed flags on legacy clips."));
    EXPECT_EQ(store.project()->updatedAt, project.updatedAt);
    await(store.closeProject());
    EXPECT_TRUE(onDisk(old).videos.at(1)->reviewed);
    await(store.openProject(old));
    EXPECT_FALSE(store.isDirty());
    EXPECT_FALSE(store.statusMessage());
}

TEST_F(ProjectStoreTest, CreatesAProjectButNotOverAFullerOne) {
    const QString created = folder.at("New.corvane");
    await(store.createProject({.name = QStringLiteral("New"), .location = QStringLiteral(" Pier ")},
                              created));
    EXPECT_EQ(error(), QString());
    EXPECT_TRUE(store.pendingImportOnLoad());
    EXPECT_EQ(store.statusMessage(), QStringLiteral("Created project New"));
    EXPECT_EQ(onDisk(created), *store.project());
    EXPECT_EQ(store.project()->location, QStringLiteral("Pier"));
    EXPECT_FALSE(store.project()->notes);
    await(store.closeProject());
    store.consumePendingImport();
    await(store.createProject({.name = QStringLiteral("Harbor")}, file));
    EXPECT_EQ(error(),
              QStringLiteral("Create failed: Save aborted: in-memory has 0 videos but disk has "
                             "3. Refusing to overwrite a fuller file."));
    EXPECT_FALSE(store.project());
    EXPECT_FALSE(store.pendingImportOnLoad());
    EXPECT_EQ(onDisk(file).videos.size(), 3);
}

TEST_F(ProjectStoreTest, SavesAfterTheLastEditAndOnClosing) {
    open();
    store.setRating(clip, 2);
    EXPECT_TRUE(store.isDirty());
    EXPECT_EQ(clock.nextDelay(), 250ms);
    clock.advance(250ms);
    EXPECT_TRUE(store.isSaving());
    store.setRating(clip, 4); // while the save runs
    await(store.flushPendingSave());
    EXPECT_FALSE(store.isDirty());
    EXPECT_EQ(onDisk(file).videos.at(0)->rating, 4);
    store.setRating(clip, 1);
    auto save = store.saveNow();
    store.addTag(clip, QStringLiteral("  pier \n"));
    await(std::move(save));
    EXPECT_TRUE(store.isDirty()) << "edited while it was written";
    EXPECT_EQ(onDisk(file).videos.at(0)->rating, 1);
    EXPECT_TRUE(onDisk(file).videos.at(0)->tags.isEmpty());
    await(store.closeProject());
    EXPECT_FALSE(store.project());
    EXPECT_FALSE(store.fileURL());
    EXPECT_EQ(onDisk(file).videos.at(0)->tags, QStringList(QStringLiteral("pier")));
    await(store.saveNow());
    EXPECT_FALSE(store.lastError());
}

TEST_F(ProjectStoreTest, AllowsOneSmallerSaveAfterADeletion) {
    open();
    store.deleteSubclip(subclip);
    await(store.flushPendingSave());
    EXPECT_FALSE(store.lastError());
    EXPECT_EQ(onDisk(file).subclipCount(), 2);
    Project thinner = *store.project();
    thinner.videos.removeLast();
    store.updateProject(thinner);
    await(store.flushPendingSave());
    EXPECT_EQ(error(),
              QStringLiteral("Save failed: Save aborted: in-memory has 2 videos but disk has 3. "
                             "Refusing to overwrite a fuller file."));
    EXPECT_TRUE(store.isDirty());
    EXPECT_EQ(store.project()->videos.size(), 2);
    store.undo();
    await(store.flushPendingSave());
    EXPECT_FALSE(store.lastError());
    EXPECT_EQ(onDisk(file).subclipCount(), 3);
}

TEST_F(ProjectStoreTest, SavesADeletionAfterAFailedSave) {
    open();
    files.setFreeSpace(0);
    store.deleteSubclip(subclip);
    await(store.flushPendingSave());
    await(store.saveNow());
    EXPECT_EQ(error(),
              QStringLiteral("Save failed: Failed to write %1: No space left on device").arg(file));
    files.setFreeSpace(-1);
    await(store.closeProject());
    EXPECT_FALSE(store.project());
    EXPECT_EQ(onDisk(file).subclipCount(), 2);
}

TEST_F(ProjectStoreTest, RetriesAFailedSaveAndShowsItsFailureOnce) {
    open();
    files.setFreeSpace(0);
    store.setRating(clip, 2);
    clock.advance(250ms);
    settle();
    ASSERT_TRUE(store.lastError());
    store.clearLastError();
    for (const auto delay : {5s, 10s, 20s, 40s, 80s, 160s, 300s, 300s}) {
        EXPECT_EQ(clock.nextDelay(), delay);
        clock.advance(delay);
        settle();
    }
    EXPECT_FALSE(store.lastError()) << "the user has dismissed it";
    EXPECT_TRUE(store.saveState().failure);
    await(store.closeProject());
    EXPECT_TRUE(store.lastError()) << "closing is refused again";
    files.setFreeSpace(-1);
    clock.advance(300s);
    settle();
    EXPECT_FALSE(store.saveState().failure);
    EXPECT_FALSE(store.lastError());
    EXPECT_EQ(onDisk(file).videos.at(0)->rating, 2);
    EXPECT_EQ(clock.pendingTimers(), 0);
}

TEST_F(ProjectStoreTest, ASuccessfulSaveClearsOnlyTheFailureOfASave) {
    open();
    const std::function<void()> failures[] = {
        [&] { await(store.openProject(folder.write("bad.corvane", "{"))); },
        [&] {
            files.setFreeSpace(0);
            await(store.writeBackup());
            files.setFreeSpace(-1);
        }};
    for (const auto &fail : failures) {
        fail();
        const auto failure = store.lastError();
        ASSERT_TRUE(failure);
        store.toggleFavorite(clip);
        await(store.flushPendingSave());
        EXPECT_EQ(store.lastError(), failure);
        EXPECT_FALSE(store.isDirty());
    }
}

TEST_F(ProjectStoreTest, SavesACopyAsAProjectOfItsOwn) {
    Project packaged = sampleProject(2);
    packaged.videos[0].edit().sourcePath = QStringLiteral("media/a.mov");
    await(store.openProject(make(QStringLiteral("Packaged.corvane"), packaged)));
    const QString file = *store.fileURL();
    store.setRating(clip, 4);
    const QString granted = folder.write("media/a.mov", "frames");
    await(authorization.authorize({granted}, file));
    EXPECT_FALSE(await(store.saveCopy(file)));
    EXPECT_EQ(error(),
              QStringLiteral("Copy failed: %1 is the open project itself. Choose another name.")
                  .arg(file));
    folder.link("linked", folder.path());
    EXPECT_FALSE(await(store.saveCopy(folder.at("linked/Packaged.corvane"))));
    EXPECT_TRUE(error().contains(QStringLiteral("is the open project itself")));
    store.clearLastError();
    folder.folder("drive");
    const QString copy = folder.at("drive/Copy.corvane");
    EXPECT_TRUE(await(store.saveCopy(copy)));
    EXPECT_EQ(store.statusMessage(), QStringLiteral("Saved a copy: Copy.corvane"));
    EXPECT_EQ(store.fileURL(), file);
    const Project copied = onDisk(copy);
    EXPECT_NE(copied.id, packaged.id);
    EXPECT_EQ(copied.videos.at(0)->sourcePath, folder.at("media/a.mov"));
    EXPECT_EQ(copied.videos.at(0)->rating, 4);
    EXPECT_EQ(await(authorization.unresolvedPaths(copy)), QSet{granted})
        << "the user is asked about the media of the copy";
    make(QStringLiteral("Fuller.corvane"), sampleProject(9));
    EXPECT_FALSE(await(store.saveCopy(folder.at("Fuller.corvane"))));
    EXPECT_THAT(error().toStdString(), testing::HasSubstr("Refusing to overwrite a fuller file."));
}

TEST_F(ProjectStoreTest, NeverOverwritesAForeignChangeUnasked) {
    open();
    Project foreign = *store.project();
    foreign.notes = QStringLiteral("from another machine");
    const auto changeElsewhere = [&] {
        make(QStringLiteral("Harbor.corvane"), foreign);
        store.setRating(clip, 2);
        store.deleteSubclip({clip, store.project()->videos.at(0)->subclips.at(0).id});
        await(store.flushPendingSave());
    };
    changeElsewhere();
    EXPECT_EQ(error(),
              QStringLiteral("Save failed: Save aborted: %1 was changed by another program after "
                             "it was last read or saved here. It was not overwritten.")
                  .arg(file));
    await(store.closeProject());
    await(store.openProject(file));
    EXPECT_TRUE(store.isDirty());
    EXPECT_EQ(onDisk(file), foreign);
    EXPECT_EQ(clock.pendingTimers(), 0) << "it isn't retried";

    await(store.openProject(file, ProjectStore::UnsavedEdits::Discard));
    EXPECT_FALSE(store.lastError());
    EXPECT_FALSE(store.isDirty());
    EXPECT_EQ(store.project(), foreign);

    foreign.videos.append(sampleVideo(QStringLiteral("another")));
    changeElsewhere();
    {
        FaultyFileSystem files;
        const FileSystemScope scope(files);
        files.setObserver([](const QString &operation, const QString &path) {
            if (operation == QLatin1String("createFileAt")) {
                throw FileError(path, ENOSPC);
            }
        });
        await(store.saveNow(ProjectStore::ForeignChanges::Overwrite));
    }
    await(store.flushPendingSave());
    EXPECT_EQ(onDisk(file), foreign) << "the answer ended with the save that failed";
    await(store.saveNow(ProjectStore::ForeignChanges::Overwrite));
    EXPECT_FALSE(store.lastError());
    EXPECT_EQ(onDisk(file), *store.project());
    EXPECT_EQ(onDisk(file).subclipCount(), 2);
    store.setRating(clip, 5);
    await(store.flushPendingSave());
    EXPECT_EQ(onDisk(file).videos.at(0)->rating, 5);
}

TEST_F(ProjectStoreTest, AppliesTheRulesOfClipEdits) {
    await(store.openProject(file));
    const auto video = [this]() -> const VideoRecord & { return *store.project()->videos.at(1); };
    const QString id = QStringLiteral("clip-1");
    store.toggleReviewed(id);
    EXPECT_FALSE(video().reviewed) << "marked on opening because of its subclip";
    EXPECT_FALSE(video().reviewedAt);
    store.setRating(id, 7);
    EXPECT_EQ(video().rating, 5);
    EXPECT_TRUE(video().reviewed);
    store.setRating(id, -1);
    EXPECT_EQ(video().rating, 0);
    store.toggleReviewed(id);
    store.toggleSelectedForExport(id);
    EXPECT_EQ(video().reviewedAt, clock.now());
    store.toggleReviewed(id);
    store.toggleRejected(id);
    EXPECT_TRUE(video().rejected);
    EXPECT_FALSE(video().selectedForExport);
    EXPECT_FALSE(video().reviewed) << "rejecting doesn't mark as reviewed";
    store.toggleRejected(id);
    EXPECT_FALSE(video().selectedForExport);
    store.setNotes(id, QStringLiteral(" "));
    EXPECT_EQ(video().notes, QStringLiteral(" "));
    store.setNotes(id, QString());
    EXPECT_FALSE(video().notes);
    store.addTag(id, QStringLiteral("Tag"));
    store.addTag(id, QStringLiteral("tag"));
    store.addTag(id, QStringLiteral("Tag "));
    store.addTag(id, QStringLiteral(" "));
    EXPECT_EQ(video().tags, (QStringList{QStringLiteral("Tag"), QStringLiteral("tag")}));
    EXPECT_EQ(store.selectClips({id, clip, QStringLiteral("unknown")}), 2);
    EXPECT_EQ(store.selectClips({id}), 0);
    EXPECT_EQ(store.deselectClips({id, clip}), 2);
    EXPECT_EQ(store.project()->updatedAt, clock.now());
}

TEST_F(ProjectStoreTest, AppliesTheRulesOfSubclipEdits) {
    await(store.openProject(file));
    const auto subclips = [this] { return store.project()->videos.at(0)->subclips; };
    const QString added = store.addSubclip(clip, 2, 3);
    ASSERT_EQ(subclips().size(), 2);
    EXPECT_EQ(subclips().at(1).creationIndex, 2);
    EXPECT_TRUE(subclips().at(1).selectedForExport);
    EXPECT_EQ(store.addSubclip(QStringLiteral("unknown"), 0, 1), QString());
    const SubclipKey key{clip, added};
    store.renameSubclip(key, QStringLiteral("  Wide \n"));
    EXPECT_EQ(subclips().at(1).label, QStringLiteral("Wide"));
    store.renameSubclip(key, QStringLiteral(" "));
    EXPECT_FALSE(subclips().at(1).label);
    store.setSubclipRating(key, 9);
    store.toggleSubclipFavorite(key);
    EXPECT_EQ(subclips().at(1).rating, 5);
    EXPECT_TRUE(subclips().at(1).favorite);
    store.toggleSubclipSelected(key);
    EXPECT_EQ(store.selectSubclips({key, subclip}), 2);
    EXPECT_EQ(store.deselectSubclips({key, key}), 1);
    store.deleteSubclips({key, subclip});
    EXPECT_TRUE(subclips().isEmpty());
    store.addSubclip(clip, 0, 1);
    EXPECT_EQ(subclips().at(0).creationIndex, 1) << "the highest number was freed";
}

TEST_F(ProjectStoreTest, KnowsAfterEveryEditWhetherAnythingIsSelectedForExport) {
    const QString last = QStringLiteral("clip-2");
    const auto withoutFirstClip = [this] {
        Project project = *store.project();
        project.videos.removeFirst();
        return project;
    };
    const std::pair<std::function<void()>, bool> edits[] = {
        {[&] { await(store.openProject(file)); }, false},
        {[&] { store.toggleSelectedForExport(last); }, true},
        {[&] { store.setRating(last, 3); }, true},
        {[&] { store.toggleSubclipSelected(subclip); }, true},
        {[&] { store.deselectClips({last}); }, true},
        {[&] { store.updateProject(withoutFirstClip()); }, false},
        {[&] { store.undo(); }, true},
        {[&] { store.deleteSubclip(subclip); }, true},
        {[&] { store.toggleRejected(last); }, false},
        {[&] { store.undo(); }, true},
        {[&] { await(store.closeProject()); }, false},
    };
    for (size_t edit = 0; edit < std::size(edits); ++edit) {
        edits[edit].first();
        EXPECT_EQ(store.hasSelects(), edits[edit].second) << "after edit " << edit;
    }
}

TEST_F(ProjectStoreTest, KeepsFiftyUndoStepsAndUndoesABatchAtOnce) {
    await(store.openProject(file));
    for (int i = 0; i < 51; ++i) {
        store.setRating(clip, i % 2 + 1);
    }
    int undone = 0;
    for (; store.canUndo(); ++undone) {
        store.undo();
    }
    EXPECT_EQ(undone, 50);
    EXPECT_EQ(store.project()->videos.at(0)->rating, 1) << "the oldest snapshot was dropped";
    store.redo();
    store.toggleFavorite(clip);
    EXPECT_FALSE(store.canRedo()) << "a new edit clears the redo history";
    int notices = 0;
    QObject::connect(&store, &ProjectStore::projectChanged, &store, [&notices] { ++notices; });
    {
        const ProjectStore::UndoBatch outer(store);
        const ProjectStore::UndoBatch inner(store);
        for (const VideoItem &video : store.project()->videos) {
            store.setRating(video->id, 5);
        }
    }
    EXPECT_EQ(notices, 1);
    store.addSubclip(clip, 1, 2);
    store.undo();
    EXPECT_EQ(store.project()->videos.at(2)->rating, 0) << "one undo reverts the batch";
    EXPECT_EQ(store.project()->videos.at(0)->subclips.size(), 1) << "and the edits after it";
    EXPECT_TRUE(store.project()->videos.at(0)->favorite);
}

TEST_F(ProjectStoreTest, ReportsBackupsAndTheirFailures) {
    await(store.openProject(file));
    await(store.writeBackup());
    EXPECT_EQ(store.statusMessage(),
              QStringLiteral("Backup written: Harbor.2026-03-01T09-30-12.345Z.corvane.bak"));
    files.setFreeSpace(0);
    await(store.writeBackup());
    EXPECT_THAT(error().toStdString(),
                testing::StartsWith("Backup failed: Backup write failed at "));
    EXPECT_TRUE(store.project());
}

TEST(DebounceSaver, SavesAfterAQuarterSecondAndWithinTwo) {
    TestClock clock;
    int saves = 0;
    DebounceSaver saver(
        [&saves]() -> QCoro::Task<> {
            ++saves;
            co_return;
        },
        clock);
    await(saver.flush());
    EXPECT_EQ(saves, 0);
    for (int edit = 0; edit < 10; ++edit) {
        saver.schedule();
        clock.advance(190ms);
    }
    saver.schedule(); // 1.9 s into the window
    EXPECT_EQ(clock.nextDelay(), 100ms);
    clock.advance(100ms);
    EXPECT_EQ(saves, 1);
    saver.schedule();
    await(saver.flush());
    EXPECT_EQ(saves, 2);
    clock.advance(5s);
    EXPECT_EQ(saves, 2) << "the flushed edit isn't saved again";
}
