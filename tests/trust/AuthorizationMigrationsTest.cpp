#include "trust/AuthorizationMigrations.h"

#include "support/Await.h"
#include "support/SampleProject.h"
#include "support/TestFolder.h"
#include "trust/AuthorizationFile.h"
#include "trust/ContentHasher.h"
#include "trust/PathSafety.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace corvane;
using corvane::test::await;

namespace {

/// The registry of an older version, with its own folder and settings.
class AuthorizationMigrationsTest : public testing::Test {
  protected:
    using Paths = QSet<QString>;

    std::unique_ptr<QSettings> defaults() const {
        return std::make_unique<QSettings>(folder.at("defaults.conf"), QSettings::IniFormat);
    }
    bool isMigrated(const char *guard) const {
        return defaults()
            ->value(QStringLiteral("Corvane.MediaSourceAuthorization.") + QLatin1String(guard))
            .toBool();
    }
    void start(const AuthorizationTables &tables) {
        registry.reset();
        folder.folder("data");
        AuthorizationFile::write(tables, folder.at(kFile));
        start();
    }
    void start() {
        registry.reset();
        registry = std::make_unique<MediaSourceAuthorization>(folder.at("data"), defaults());
        registry->setContentMismatchContinuation([this](const ContentMismatchEvent &event) {
            EXPECT_EQ(event.projectKey, project);
            reported.unite(event.paths);
        });
    }
    /// Creates a file and its grant by an older version.
    std::pair<QString, std::optional<RootIdentity>> legacyGrant(const QString &name) {
        const QString path = folder.write(name, name.toUtf8());
        auto identity = PathSafety::folderIdentity(folder.at(name.section(QLatin1Char('/'), 0, 0)));
        identity->contentHash = ContentHasher::duplicateKey(path);
        return {path, identity};
    }
    AuthorizedPaths table() { return await(registry->authorizedPaths(project)); }
    QString anchor(const QString &name) {
        const auto entry = table().value(folder.at(name));
        return entry ? entry->contentHash.value_or(QString()) : QString();
    }
    ProjectSummary summary(const char *id, const QString &file) const {
        return {.id = QString::fromLatin1(id), .filePath = file};
    }

    const QString kFile = QStringLiteral("data/media-authorizations.json");
    test::TestFolder folder;
    QString project = folder.write("p/shoot.corvane", "{}");
    ProjectFileIO io;
    std::unique_ptr<MediaSourceAuthorization> registry;
    Paths reported;
};

} // namespace

TEST_F(AuthorizationMigrationsTest, MakesPathsKeyedByAnIdPendingInTheOnlyProjectWithIt) {
    const char *const own = "5D1B4C52-9A5F-4E0B-8E43-2D7A0F4C6B11";
    const char *const shared = "0F0C7B35-41C1-4C5E-B2C9-8B0B2E2A9D10";
    const auto one = [](const char *path) {
        return AuthorizedPaths{{QString::fromLatin1(path), RootIdentity{}}};
    };
    start({.authorizedPaths = {{QString::fromLatin1(own), one("/a.mov")},
                               {QString::fromLatin1(shared), one("/b.mov")},
                               {QStringLiteral("nonsense"), one("/c.mov")},
                               {project, one("/d.mov")}}});
    const QString link = folder.link("desk/link.corvane", project);
    await(registry->rekeyLegacyProjectIdEntries({summary(own, link), summary(shared, project),
                                                 summary(shared, folder.at(kFile)),
                                                 summary("nonsense", project)}));
    start();
    EXPECT_EQ(await(registry->pendingLegacyPaths(project)), Paths{QStringLiteral("/a.mov")});
    EXPECT_EQ(table(), one("/d.mov"));
    EXPECT_EQ(AuthorizationFile::read(folder.at(kFile)).authorizedPaths.size(), 1);
    EXPECT_TRUE(isMigrated("didRekeyLegacyProjectIdEntriesV1"));
}

TEST_F(AuthorizationMigrationsTest, GrantsTheClipsOfRecentProjectsOnce) {
    folder.write("card/a.mov", "a");
    Project document = test::sampleProject(1);
    document.videos[0].edit().sourcePath = folder.at("card/a.mov");
    await(io.save(document, project, true));
    const auto recent = {summary("", folder.at("gone.corvane")), summary("", project)};
    start({});
    await(migrateAuthorizations(*registry, io, recent, ContentHashMigration::Skipped));
    EXPECT_TRUE(anchor(QStringLiteral("card/a.mov")).startsWith(QStringLiteral("3:")));
    EXPECT_TRUE(isMigrated("didGrandfatherLegacyProjectsV1"));
    EXPECT_FALSE(isMigrated("didGrandfatherContentHashV3"));
    start({});
    await(registry->grandfatherLegacyProjects(recent, io));
    EXPECT_TRUE(table().isEmpty());
}

TEST_F(AuthorizationMigrationsTest, ReplacesOlderAnchorsIfTheyMatch) {
    AuthorizationTables tables;
    AuthorizedPaths &grants = tables.authorizedPaths[project];
    for (const char *name : {"card/same.mov", "card/other.mov", "card/gone.mov", "moved/other.mov",
                             "card/odd.mov", "card/full.mov"}) {
        const auto [path, identity] = legacyGrant(QString::fromLatin1(name));
        grants.insert(path, identity);
    }
    grants[folder.at("card/odd.mov")]->contentHash = QStringLiteral("0123456789");
    grants[folder.at("card/full.mov")]->contentHash = QStringLiteral("3:full");
    grants[folder.at("moved/other.mov")]->inode += 1;
    grants.insert(QStringLiteral("/empty.mov"), std::nullopt);
    folder.write("card/other.mov", "other");
    folder.write("moved/other.mov", "other");
    const QString gone = folder.at("card/gone.mov");
    ASSERT_TRUE(QFile::rename(gone, gone + QStringLiteral(".away")));
    start(tables);
    await(registry->grandfatherContentHashes());

    const QString other = folder.at("card/other.mov");
    const QString upgraded = anchor(QStringLiteral("card/same.mov"));
    EXPECT_EQ(ContentHasher::verifyAnchor(upgraded, folder.at("card/same.mov")),
              ContentHasher::AnchorVerification::matches);
    EXPECT_TRUE(ContentHasher::parseFullAnchor(upgraded));
    AuthorizedPaths expected = grants;
    expected[folder.at("card/same.mov")]->contentHash = upgraded;
    expected.remove(other);
    EXPECT_EQ(table(), expected);
    EXPECT_EQ(reported, Paths{other});
    EXPECT_EQ(await(registry->contentMismatchPaths(project)), reported);
    EXPECT_EQ(await(registry->pendingLegacyPaths(project)), reported);
    EXPECT_FALSE(isMigrated("didGrandfatherContentHashV3"));

    ASSERT_TRUE(QFile::rename(gone + QStringLiteral(".away"), gone)); // the drive is mounted again
    folder.write("moved/other.mov", "moved/other.mov");
    start();
    await(registry->grandfatherContentHashes());
    EXPECT_EQ(anchor(QStringLiteral("card/same.mov")), upgraded);
    EXPECT_TRUE(anchor(QStringLiteral("card/gone.mov")).startsWith(QStringLiteral("3:")));
    EXPECT_TRUE(isMigrated("didGrandfatherContentHashV3"));
}

TEST_F(AuthorizationMigrationsTest, DoesNotOverwriteALaterGrant) {
    const auto [path, identity] = legacyGrant(QStringLiteral("card/a.mov"));
    start({.authorizedPaths = {{project, {{path, identity}}}}});
    folder.write("card/a.mov", "other contents");
    auto grant = registry->authorize({path}, project); // completes before the migration
    auto migration = registry->grandfatherContentHashes();
    await(std::move(grant));
    await(std::move(migration));
    EXPECT_TRUE(anchor(QStringLiteral("card/a.mov")).startsWith(QStringLiteral("3:")));
    EXPECT_TRUE(reported.isEmpty());
    EXPECT_TRUE(isMigrated("didGrandfatherContentHashV3"));
}
