#include "trust/MediaSourceAuthorization.h"

#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"
#include "trust/ContentHasher.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include <map>

using namespace corvane;
using corvane::test::await;
using corvane::test::FaultyFileSystem;

namespace {

const QString kRegistry = QStringLiteral("data/media-authorizations.json");

/// A registry with its own folder, a project, and a card with one clip.
class MediaSourceAuthorizationTest : public testing::Test {
  protected:
    using Paths = QSet<QString>;

    Paths pending() { return await(registry->pendingLegacyPaths(project)); }
    AuthorizedPaths table() { return await(registry->authorizedPaths(project)); }
    std::optional<RootIdentity> entry(const QString &path) { return table().value(path); }
    bool isEmptyEntry(const QString &path) { return table().contains(path) && !entry(path); }
    bool isGrantedUnchanged(const QString &path) {
        using Verdict = ContentHasher::AnchorVerification;
        const auto granted = entry(path);
        return granted && granted->contentHash &&
               ContentHasher::verifyAnchor(*granted->contentHash, path) == Verdict::matches;
    }
    void authorize(const QStringList &paths) { await(registry->authorize(paths, project)); }
    void confirm(const QStringList &paths) { await(registry->confirmPendingPaths(paths, project)); }
    void reopen() {
        registry.reset();
        registry = std::make_unique<MediaSourceAuthorization>(folder.at("data"));
    }

    test::TestFolder folder;
    QString project = folder.write("p/shoot.corvane", "{}");
    QString clip = folder.write("card/clip.mov", "take one");
    QString offline = folder.at("offline/clip.mov");
    QString unhashable = folder.folder("card/folder.mov");
    std::unique_ptr<MediaSourceAuthorization> registry =
        std::make_unique<MediaSourceAuthorization>(folder.at("data"));
};

} // namespace

TEST_F(MediaSourceAuthorizationTest, GrantsFilesItCanHashAndListsTheOthers) {
    authorize({clip, folder.at("card/./clip.mov"), offline, unhashable});
    EXPECT_TRUE(isGrantedUnchanged(clip));
    EXPECT_TRUE(isEmptyEntry(offline) && isEmptyEntry(unhashable));
    EXPECT_EQ(pending(), Paths{unhashable});
    EXPECT_EQ(await(registry->unresolvedPaths(project)), (Paths{offline, unhashable}));
    EXPECT_EQ(pending(), (Paths{offline, unhashable}));
    const auto before = table();
    reopen();
    EXPECT_EQ(table(), before);
    folder.write("card/clip.mov", "take two");
    authorize({clip});
    EXPECT_TRUE(isGrantedUnchanged(clip));
}

TEST_F(MediaSourceAuthorizationTest, GrantsAChangedFileOnlyWithAnAnchorOfItsNewContents) {
    registry.reset();
    folder.write(kRegistry, QByteArray(R"({"paths":{"%p":{"%o":{"device":1,"inode":2}}},
        "pendingLegacy":{"%p":["%c","%o"]},"contentMismatch":{"%p":["%c","%o"]}})")
                                .replace("%p", project.toUtf8())
                                .replace("%c", clip.toUtf8())
                                .replace("%o", offline.toUtf8()));
    reopen();
    confirm({clip, offline});
    EXPECT_TRUE(isGrantedUnchanged(clip));
    EXPECT_TRUE(isEmptyEntry(offline));
    EXPECT_EQ(pending(), Paths{offline});
    EXPECT_EQ(await(registry->contentMismatchPaths(project)), (Paths{clip, offline}));
}

TEST_F(MediaSourceAuthorizationTest, KeepsTheAnchorOfAFileThatCannotBeHashed) {
    authorize({clip});
    const auto before = entry(clip);
    ASSERT_TRUE(QDir().rename(folder.at("card"), folder.at("old")));
    authorize({clip}); // the folder is missing, so the earlier grant stays
    EXPECT_EQ(entry(clip), before);
    folder.folder("card");
    authorize({clip});
    const auto after = entry(clip);
    ASSERT_TRUE(before && after);
    EXPECT_EQ(after->contentHash, before->contentHash);
    EXPECT_NE(after->inode, before->inode);
    EXPECT_TRUE(pending().isEmpty());
}

TEST_F(MediaSourceAuthorizationTest, WritesTheFileOnlyForChangesAndTwiceOnlyIfHashingIsSlow) {
    std::atomic<int> writes = 0; // written on the registry's executor
    FaultyFileSystem files;
    const FileSystemScope scope(files);
    files.setObserver([&](const QString &operation, const QString &) {
        writes += operation == QStringLiteral("createFileAt") ? 1 : 0;
    });
    authorize({});
    confirm({clip});
    await(registry->authorizeMediaRoot(folder.at("missing"), project));
    EXPECT_EQ(writes, 0);
    authorize({clip});
    EXPECT_EQ(writes.exchange(0), 1);
    authorize({offline});
    await(registry->unresolvedPaths(project));
    writes = 0;
    confirm({clip});
    await(registry->unresolvedPaths(project));
    EXPECT_EQ(writes, 0);
    const QString large = folder.write("card/large.mov", "");
    const QString copied = folder.write("card/copied.mov", "");
    ASSERT_TRUE(QFile::resize(large, 65 << 20) && QFile::resize(copied, 65 << 20));
    authorize({large});
    EXPECT_EQ(writes.exchange(0), 2);
    await(registry->authorize({copied}, project, {{copied, QStringLiteral("3:known")}}));
    EXPECT_EQ(writes, 1);
    files.setObserver({});
}

TEST_F(MediaSourceAuthorizationTest, KeepsWhatWasHashedWhenItIsCancelled) {
    FaultyFileSystem files;
    const FileSystemScope scope(files);
    authorize({clip});
    const auto before = entry(clip);
    folder.write("card/clip.mov", "take two");
    await(registry->markPending({}, {clip}, project));
    const QString first = folder.write("card/first.mov", "");
    const QString second = folder.write("card/second.mov", "");
    ASSERT_TRUE(QFile::resize(first, 17 << 20) && QFile::resize(second, 17 << 20));
    std::stop_source stop;
    files.setObserver([&](const QString &operation, const QString &path) {
        if (operation == u"read" && path == second) {
            stop.request_stop();
        }
    });
    QList<HashingProgress> reports;
    const HashingControl control{
        .stop = stop.get_token(),
        .progress = [&](const HashingProgress &progress) { reports.append(progress); }};
    const Paths granted =
        await(registry->authorize({first, second, clip, offline}, project, {}, control));
    files.setObserver({});
    EXPECT_EQ(granted, Paths{first});
    ASSERT_FALSE(reports.isEmpty());
    EXPECT_EQ(reports.last(), (HashingProgress{1, 3, 17 << 20, (34 << 20) + 8}));
    reopen();
    EXPECT_TRUE(isGrantedUnchanged(first));
    EXPECT_TRUE(isEmptyEntry(second) && isEmptyEntry(offline));
    EXPECT_EQ(entry(clip), before);
    EXPECT_EQ(pending(), (Paths{second, clip}));
    EXPECT_EQ(await(registry->confirmPendingPaths({second, clip}, project, control)), Paths());
    EXPECT_EQ(pending(), (Paths{second, clip}));
    confirm({second, clip});
    EXPECT_TRUE(isGrantedUnchanged(second) && isGrantedUnchanged(clip));
}

TEST_F(MediaSourceAuthorizationTest, MovesAPathThroughItsStates) {
    enum { None, Empty, Granted };
    struct Step {
        const char *event;
        int entry;
        bool isPending;
    };
    const QString path = folder.at("drive/clip.mov");
    const std::map<std::string, std::function<void()>> actions{
        {"authorize", [&] { authorize({path}); }},
        {"load", [&] { await(registry->pendingMedia(project)); }},
        {"confirm", [&] { confirm({path}); }},
        {"mount", [&] { folder.write("drive/clip.mov", "take one"); }},
        {"change", [&] { folder.write("drive/clip.mov", "take two"); }},
        {"mark as changed", [&] { await(registry->markPending({}, {path}, project)); }},
        {"mark as never granted", [&] { await(registry->markPending({path}, {}, project)); }},
        {"forget",
         [&] {
             registry.reset();
             EXPECT_TRUE(QFile::remove(folder.at(kRegistry)));
         }},
        {"unmount", [&] { EXPECT_TRUE(QDir(folder.at("drive")).removeRecursively()); }},
        {"mount a folder in its place", [&] { folder.folder("drive/clip.mov"); }},
    };
    const std::vector<Step> steps{
        {"confirm", None, false},
        {"authorize", Empty, false}, // the folder can't be read
        {"load", Empty, true},
        {"confirm", Empty, true},
        {"mount", Empty, true},
        {"confirm", Granted, false},
        {"change", Granted, false},
        {"authorize", Granted, false},
        {"mark as changed", Granted, true},
        {"unmount", Granted, true},
        {"confirm", Granted, true}, // an earlier anchor confirms nothing
        {"mount a folder in its place", Granted, true},
        {"confirm", Granted, true},
        {"unmount", Granted, true},
        {"mount", Granted, true},
        {"confirm", Granted, false},
        {"forget", None, false},
        {"unmount", None, false},
        {"mount a folder in its place", None, false},
        {"authorize", Empty, true}, // the file can't be hashed
        {"confirm", Empty, true},
        {"forget", None, false},
        {"mark as never granted", Empty, true},
    };
    for (const auto &[event, expectedEntry, isPending] : steps) {
        const std::string_view what = event;
        actions.at(event)();
        reopen(); // every state is stored
        const int found = !table().contains(path) ? None : entry(path) ? Granted : Empty;
        EXPECT_EQ(found, expectedEntry) << event;
        EXPECT_EQ(pending().contains(path), isPending) << event;
        EXPECT_TRUE(found != Granted || isPending || what == "change" || isGrantedUnchanged(path))
            << event;
    }
}

TEST_F(MediaSourceAuthorizationTest, KeepsAGrantThatIsQueriedWhileItIsConfirmed) {
    authorize({offline});
    await(registry->unresolvedPaths(project));
    folder.write("offline/clip.mov", "back again");
    auto confirming = registry->confirmPendingPaths({offline}, project);
    auto query = registry->pendingMedia(project);
    const PendingMedia media = await(std::move(query));
    EXPECT_EQ(media.unresolved, Paths{offline});
    EXPECT_EQ(media.pendingLegacy, Paths{offline});
    await(std::move(confirming));
    EXPECT_TRUE(isGrantedUnchanged(offline));
    EXPECT_TRUE(pending().isEmpty());
}

TEST_F(MediaSourceAuthorizationTest, ReportsAGrantThatWouldExceedTheFileLimitAndKeepsTheFile) {
    const QString longest(8388608 - 100, QLatin1Char('x'));
    registry.reset();
    folder.write(kRegistry, R"({"paths":{"/p":{"/)" + longest.toUtf8() + R"(":null}}})");
    const QByteArray original = folder.read(kRegistry);
    reopen();
    QStringList notices;
    registry->setNoticeContinuation([&](const QString &notice) { notices.append(notice); });
    authorize({clip});
    EXPECT_TRUE(folder.read(kRegistry) == original);
    EXPECT_TRUE(isGrantedUnchanged(clip));
    const QString unsaved = QStringLiteral("The media authorizations could not be written to %1: "
                                           "the file would grow past the 8 MB that can be read "
                                           "again. They last until Corvane quits.")
                                .arg(folder.at(kRegistry));
    EXPECT_EQ(notices.value(1), unsaved);
    EXPECT_EQ(registry->unsavedNotice(), unsaved);
}

TEST_F(MediaSourceAuthorizationTest, WarnsOfANearlyFullFileUntilProjectsAreForgotten) {
    const auto fill = [&](qsizetype bytes) {
        registry.reset();
        folder.write(kRegistry,
                     R"({"paths":{"/p":{"/)" + QByteArray(bytes - 27, 'x') + R"(":null}}})");
        reopen();
        table();
        return registry->notices();
    };
    EXPECT_EQ(fill(6710886), QStringList());
    const QString warning =
        QStringLiteral("The media authorizations of all projects fill 80% of the 8 MB that can be "
                       "stored. To make room, forget projects that you no longer need: "
                       "\"corvane-cli grants\" lists them.");
    EXPECT_EQ(fill(6710887), QStringList{warning});
    EXPECT_EQ(registry->fileBytes(), 6710887);
    QStringList notices;
    registry->setNoticeContinuation([&](const QString &notice) { notices.append(notice); });
    authorize({clip, offline});
    await(registry->authorizeMediaRoot(folder.folder("p/media"), project));
    EXPECT_EQ(notices, QStringList()) << "the warning is not repeated after each change";
    const QList<ProjectGrants> expected{
        {.projectKey = QStringLiteral("/p")},
        {.projectKey = project, .grantedCount = 1, .hasMediaFolder = true}};
    EXPECT_EQ(await(registry->projects()), expected);
    EXPECT_TRUE(await(registry->forget(QStringLiteral("/p"))));
    EXPECT_FALSE(await(registry->forget(QStringLiteral("/p"))));
    EXPECT_EQ(registry->notices(), QStringList());
    reopen();
    EXPECT_EQ(await(registry->projects()), expected.mid(1));
}

TEST_F(MediaSourceAuthorizationTest, SetsAnUnreadableFileAsideBeforeTheFirstChange) {
    FaultyFileSystem files;
    const FileSystemScope scope(files);
    const QByteArray damaged = R"({"paths":{"/p":{"/a.mov":7}}})";
    const QByteArray sound = R"({"paths":{}})";
    const auto kept = [&] {
        QStringList names = folder.names(u"data");
        names.removeIf([](const QString &name) { return !name.contains(u".unreadable-"); });
        return names;
    };
    registry.reset();
    folder.write(kRegistry, damaged);
    reopen();
    EXPECT_EQ(table(), AuthorizedPaths());
    ASSERT_EQ(registry->notices().size(), 1);
    EXPECT_EQ(registry->notices()[0],
              QStringLiteral("The media authorizations in %1 can't be read: it is damaged, or a "
                             "newer version of Corvane wrote it. Export and Handoff refuse all "
                             "media until you confirm them again. The file is kept.")
                  .arg(folder.at(kRegistry)));
    EXPECT_EQ(folder.read(kRegistry), damaged) << "opening changes no file";
    authorize({clip});
    authorize({offline});
    ASSERT_EQ(kept().size(), 1);
    EXPECT_EQ(folder.read(QStringLiteral("data/") + kept().first()), damaged);
    EXPECT_TRUE(registry->notices().value(0).contains(kept().first()));
    reopen();
    EXPECT_EQ(table().size(), 2);
    EXPECT_EQ(registry->notices(), QStringList());

    // An I/O error, and a folder in which no file can be renamed.
    registry.reset();
    folder.write(kRegistry, sound);
    files.setObserver([](const QString &operation, const QString &path) {
        if (path.contains(u"media-authorizations") &&
            (operation == u"openForReading" || operation == u"renameAt")) {
            throw FileError(path, EIO);
        }
    });
    reopen();
    authorize({clip});
    files.setObserver({});
    EXPECT_TRUE(isGrantedUnchanged(clip)) << "until the process ends";
    EXPECT_TRUE(registry->unsavedNotice());
    EXPECT_EQ(folder.read(kRegistry), sound);
    EXPECT_EQ(kept().size(), 1);
}

TEST_F(MediaSourceAuthorizationTest, IdentifiesAProjectThroughALinkButNotUnderANewName) {
    const QString link = folder.link("desk/link.corvane", project);
    await(registry->authorize({clip}, link));
    EXPECT_TRUE(isGrantedUnchanged(clip));
    project = folder.at("p/new.corvane");
    EXPECT_TRUE(table().isEmpty());
}

TEST_F(MediaSourceAuthorizationTest, RecognizesAMediaFolderByItsIdentity) {
    FaultyFileSystem volumes;
    const FileSystemScope scope(volumes);
    volumes.setVolumeUUID(QStringLiteral("1111-AAAA"));
    const QString media = folder.folder("p/media");
    const QString link = folder.link("p/link", media);
    const auto isAuthorized = [&](const QString &root) {
        return await(registry->isMediaRootAuthorized(root, project));
    };
    await(registry->authorizeMediaRoot(link, project));
    EXPECT_FALSE(isAuthorized(link) || isAuthorized(media));
    await(registry->authorizeMediaRoot(media + QLatin1Char('/'), project));
    EXPECT_TRUE(isAuthorized(media));
    EXPECT_TRUE(await(registry->sourceGrants(project)).mediaRootAuthorized);
    EXPECT_FALSE(isAuthorized(folder.at("card")));
    volumes.setVolumeUUID(QStringLiteral("2222-BBBB"));
    EXPECT_FALSE(isAuthorized(media));
    EXPECT_FALSE(await(registry->sourceGrants(project)).mediaRootAuthorized);
    volumes.setVolumeUUID(std::nullopt);
    EXPECT_TRUE(isAuthorized(media));
    ASSERT_TRUE(QDir().rename(media, folder.at("p/kept")));
    EXPECT_FALSE(isAuthorized(media) || isAuthorized(folder.at("p/kept")));
    folder.folder("p/media");
    EXPECT_FALSE(isAuthorized(media));
}

TEST_F(MediaSourceAuthorizationTest, GrantsOnlyClipsLocatedInTheMediaFolder) {
    const QString own = folder.at("p/media/own.mov");
    const QString missing = folder.at("p/media/missing.mov");
    Project document;
    for (const QString &path :
         {own, missing, clip, folder.at("p/media/link.mov"), folder.at("p/media/dir.mov")}) {
        document.videos.append(VideoItem(VideoRecord{.sourcePath = path}));
    }
    await(registry->authorizeMediaFolderClips(document, project));
    EXPECT_TRUE(table().isEmpty()); // there is no such folder yet
    folder.write("p/media/own.mov", "own");
    folder.folder("p/media/dir.mov");
    folder.link("p/media/link.mov", clip);
    await(registry->authorizeMediaFolderClips(document, project));
    EXPECT_EQ(table().size(), 2);
    EXPECT_TRUE(isGrantedUnchanged(own) && isEmptyEntry(missing));
}

TEST_F(MediaSourceAuthorizationTest, KeepsOverlappingGrantsOnAFullDisk) {
    FaultyFileSystem full;
    const FileSystemScope scope(full);
    full.setFreeSpace(0);
    const QString second = folder.write("card/second.mov", "take two");
    auto first = registry->authorize({clip}, project);
    auto other = registry->authorize({second}, project);
    auto early = registry->authorizedPaths(project); // both queued before hashing starts
    auto unresolved = registry->unresolvedPaths(project);
    EXPECT_EQ(await(std::move(early)), (AuthorizedPaths{{clip, {}}, {second, {}}}));
    EXPECT_EQ(await(std::move(unresolved)).size(), 2);
    await(std::move(first));
    await(std::move(other));
    EXPECT_TRUE(isGrantedUnchanged(clip) && isGrantedUnchanged(second));
    EXPECT_TRUE(await(registry->pendingLegacyPaths(project)).isEmpty());
    EXPECT_FALSE(folder.has(kRegistry));
    full.setFreeSpace(-1);
    authorize({offline});
    reopen();
    EXPECT_EQ(table().size(), 3);
}
