#include "session/MediaConfirmationBanner.h"
#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/SampleProject.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"
#include "trust/AuthorizationFile.h"
#include "trust/PathSafety.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace corvane;
using corvane::test::await;

namespace {

using Kind = MediaConfirmationBanner::Kind;
using State = MediaConfirmation;

QStringList clips(int count) {
    QStringList paths;
    for (int index = 1; index <= count; ++index) {
        paths.append(QStringLiteral("/card/C%1.MP4").arg(index));
    }
    return paths;
}

/// A session whose registry file is written by each test.
class MediaConfirmationTest : public testing::Test {
  protected:
    void open(const AuthorizationTables &tables = {}) {
        folder.folder("data");
        AuthorizationFile::write(tables, folder.at("data/media-authorizations.json"));
        store.reset();
        authorization = std::make_unique<MediaSourceAuthorization>(
            folder.at("data"),
            std::make_unique<QSettings>(folder.at("conf"), QSettings::IniFormat));
        store = std::make_unique<ProjectStore>(io, registry, backups, *authorization, clock);
        await(store->openProject(file));
    }
    QString saveWithClip(const QString &path) {
        Project project = test::sampleProject(1);
        project.videos[0].edit().sourcePath = path;
        await(io.save(project, file, true));
        return path;
    }
    const State &state() const { return store->mediaConfirmation(); }
    QString status() const { return store->statusMessage().value_or(QString()); }

    test::TestFolder folder;
    test::FaultyFileSystem files;
    FileSystemScope scope{files};
    test::TestClock clock;
    QString file = folder.at("p/Harbor.corvane");
    QString made = folder.folder("p");
    QString clip = folder.write("card/a.mov", "take one");
    ProjectFileIO io;
    ProjectRegistry registry{folder.at("data"), clock};
    BackupService backups{clock};
    std::unique_ptr<MediaSourceAuthorization> authorization;
    std::unique_ptr<ProjectStore> store;
    QString saved = saveWithClip(clip);
};

} // namespace

TEST(MediaConfirmationBanner, HasTheMessageOfEachKind) {
    State all{.legacyPackageMediaNeedsAuthorization = true,
              .contentMismatchPendingPaths = clips(1),
              .legacyProjectIdMediaPendingPaths = clips(2),
              .unresolvedMediaPendingPaths = clips(5)};
    all.updateFlags();
    const QString triangle = QStringLiteral("exclamationmark.triangle");
    const QList<MediaConfirmationBanner> expected{
        {Kind::legacyPackage,
         triangle,
         QStringLiteral("This project's media folder hasn't been authorized, so Export and Handoff "
                        "will refuse its clips."),
         QStringLiteral("Authorize This Project's Media"),
         QString(),
         {},
         true},
        {Kind::legacyProjectId, triangle,
         QStringLiteral("This project has media access to 2 files, including C1.MP4, C2.MP4 "
                        "recorded by an older version of Corvane for a project with this project's "
                        "identifier. Confirm only if you recognize this project."),
         QStringLiteral("Confirm This Project's Media"), QStringLiteral("Show all 2 paths"),
         clips(2), false},
        {Kind::unresolved, triangle,
         QStringLiteral("This project has 5 files, including C1.MP4, C2.MP4, C3.MP4 and 2 more "
                        "outside its media folder whose identity was never confirmed. Confirming "
                        "trusts whatever is currently at that location -- only confirm if you know "
                        "what's mounted there right now."),
         QStringLiteral("Confirm This Media's Location"), QStringLiteral("Show all 5 paths"),
         clips(5), false},
        {Kind::contentMismatch, triangle + QStringLiteral(".fill"),
         QStringLiteral("C1.MP4 is not the file this project authorized — their contents changed "
                        "since you approved them. Confirming trusts the new contents. Only confirm "
                        "if you changed these files yourself."),
         QStringLiteral("Trust the New Contents"), QStringLiteral("Show all 1 files"), clips(1),
         false}};
    const auto banners = mediaConfirmationBanners(all);
    ASSERT_EQ(banners.size(), expected.size());
    for (qsizetype index = 0; index < banners.size(); ++index) {
        EXPECT_EQ(banners[index], expected[index]) << qPrintable(banners[index].message);
    }
    State other{.contentMismatchPendingPaths = clips(4), .unresolvedMediaPendingPaths = clips(1)};
    other.updateFlags();
    EXPECT_TRUE(mediaConfirmationBanners(other).first().message.startsWith(
        QStringLiteral("This project has 1 file (C1.MP4) outside its media folder whose")));
    EXPECT_TRUE(mediaConfirmationBanners(other).last().message.startsWith(QStringLiteral(
        "4 files are not the ones this project authorized, including C1.MP4, C2.MP4, C3.MP4 and 1 "
        "more — their contents changed since")));
    const State bare{.contentMismatchNeedsConfirmation = true,
                     .legacyProjectIdMediaNeedsConfirmation = true,
                     .unresolvedMediaNeedsConfirmation = true};
    ASSERT_EQ(mediaConfirmationBanners(bare).size(), 2);
    EXPECT_EQ(mediaConfirmationBanners(bare).first().message,
              QStringLiteral("This project has media authorizations carried over from an older "
                             "version that need confirmation."));
    EXPECT_EQ(
        mediaConfirmationBanners(bare).last().message,
        QStringLiteral("This project has external media whose location was never confirmed."));
}

TEST_F(MediaConfirmationTest, ListsEachPathOnceAndAppliesAnswers) {
    const auto path = [&](const char *name) {
        return folder.write(QStringLiteral("card/") + QLatin1String(name), name);
    };
    const QSet<QString> carriedOver{path("carried.mov")};
    const QSet<QString> unresolved{path("unresolved.mov")};
    const QSet<QString> changed{path("changed.mov"), path("both.mov")};
    const QString settled = path("settled.mov");
    open({.authorizedPaths = {{file, {{*unresolved.begin(), {}}, {path("both.mov"), {}}}}},
          .pendingLegacyPaths = {{file, carriedOver | changed}},
          .contentMismatchPaths = {{file, changed | QSet{settled}}}});
    EXPECT_EQ(state().legacyProjectIdMediaPendingPaths, carriedOver.values());
    EXPECT_EQ(state().unresolvedMediaPendingPaths, unresolved.values());
    EXPECT_EQ(state().contentMismatchPendingPaths,
              (QStringList{path("both.mov"), path("changed.mov")}));
    EXPECT_FALSE(state().legacyPackageMediaNeedsAuthorization);

    await(store->confirmLegacyProjectIdMedia());
    EXPECT_EQ(status(),
              QStringLiteral("Confirmed this project's carried-over media authorizations."));
    await(store->confirmUnresolvedMedia());
    EXPECT_EQ(status(),
              QStringLiteral("Confirmed this project's external media at its current location."));
    store->setStatus({});
    ASSERT_TRUE(QFile::remove(path("both.mov")));
    auto first = store->trustChangedContents();
    await(store->trustChangedContents()); // pressed again while in progress
    EXPECT_TRUE(state().contentMismatchNeedsConfirmation);
    await(std::move(first));
    EXPECT_EQ(status(), QStringLiteral("1 file can't be read and was not confirmed. Check that its "
                                       "drive is connected, then confirm again."));
    EXPECT_EQ(state().contentMismatchPendingPaths, QStringList{folder.at("card/both.mov")});
    PathSafety::validateSource(path("changed.mov"), await(authorization->sourceGrants(file)),
                               QStringLiteral("export source"));
    EXPECT_FALSE(store->isDirty());
    await(store->closeProject());
    EXPECT_EQ(state(), State());
}

TEST_F(MediaConfirmationTest, AsksToAuthorizeAMediaFolderThatWasNeverGranted) {
    const QString inside = saveWithClip(folder.at("p/media/a.mov"));
    open();
    EXPECT_EQ(state(), State()) << "there is no media folder";
    folder.write("p/media/a.mov", "own");
    await(store->refreshMediaConfirmationState());
    EXPECT_TRUE(state().legacyPackageMediaNeedsAuthorization);
    files.setFreeSpace(0);
    await(store->authorizeLegacyPackageMedia());
    EXPECT_EQ(state(), State());
    EXPECT_EQ(status(), authorization->unsavedNotice()) << "the grant lasts until the process ends";
    EXPECT_TRUE(status().contains(QStringLiteral(": No space left on device. They last until")));
    files.setFreeSpace(-1);
    await(store->authorizeLegacyPackageMedia());
    EXPECT_EQ(status(),
              QStringLiteral("Authorized this project's media folder for Export and Handoff."));
    await(store->refreshMediaConfirmationState());
    EXPECT_EQ(state(), State());
    EXPECT_TRUE(await(authorization->authorizedPaths(file)).value(inside));
    saveWithClip(clip);
    await(store->openProject(file));
    EXPECT_EQ(state(), State()) << "all clips are outside the media folder";
}

TEST_F(MediaConfirmationTest, KeepsAMismatchFoundWhileTheProjectOpens) {
    auto identity = PathSafety::folderIdentity(folder.at("card"));
    identity->contentHash = QString(64, QLatin1Char('a'));
    const QString foreign = folder.write("card/b.mov", "of another project");
    for (const auto &moment :
         {&ProjectStore::isDirtyChanged, &ProjectStore::fileURLChanged,
          &ProjectStore::recentProjectsChanged, &ProjectStore::mediaConfirmationChanged}) {
        open({.authorizedPaths = {{QStringLiteral("/other.corvane"), {{foreign, identity}}},
                                  {file, {{clip, identity}}}},
              .pendingLegacyPaths = {{file, {foreign}}}});
        await(store->closeProject());
        std::optional<QCoro::Task<>> migration;
        const auto migrate = [&] {
            if (!migration) {
                migration = authorization->grandfatherContentHashes();
            }
        };
        QObject::connect(store.get(), moment, store.get(), migrate);
        clock.advance(std::chrono::seconds(1));
        auto opening = store->openProject(file);
        if (moment == &ProjectStore::isDirtyChanged) {
            migrate(); // before the project is read
        }
        await(std::move(opening));
        ASSERT_TRUE(migration);
        await(std::move(*migration));
        EXPECT_EQ(state().contentMismatchPendingPaths, QStringList{clip});
        EXPECT_EQ(state().legacyProjectIdMediaPendingPaths, QStringList{foreign});
        ASSERT_TRUE(QFile::remove(folder.at("conf")));
    }
}
