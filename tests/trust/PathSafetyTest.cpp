#include "trust/PathSafety.h"

#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using namespace corvane::PathSafety;
using Kind = Violation::Kind;

namespace {

/// A project folder, a card with one clip, and the grants of that clip.
class PathSafetyTest : public testing::Test {
  protected:
    /// Returns nullopt if the source is accepted.
    std::optional<Kind> refusal(const QString &path) const {
        try {
            validateSource(path, grants, QStringLiteral("export source"));
            return std::nullopt;
        } catch (const Violation &violation) {
            return violation.kind();
        }
    }
    std::optional<Kind> refusal(const QString &path, const std::optional<RootIdentity> &entry) {
        grants.authorizedSourcePaths = {{path, entry}};
        return refusal(path);
    }
    RootIdentity withHash(const QString &anchor) const {
        RootIdentity identity = here;
        identity.contentHash = anchor;
        return identity;
    }

    test::TestFolder folder;
    QString clip = folder.write("card/clip.mov", "take one");
    RootIdentity here = folderIdentity(folder.at("card")).value_or(RootIdentity{});
    RootIdentity elsewhere{{.device = here.device, .inode = here.inode + 1}, {}};
    SourceGrants grants{.projectFolder = folder.path()};
};

} // namespace

TEST_F(PathSafetyTest, DetectsPathsThatLeaveAFolderOrReachThroughALink) {
    const QString root = folder.folder("a/b");
    folder.write("a/b/c/x.mov", "x");
    folder.link("a/b/out", folder.folder("a/bc"));
    folder.link("a/b/c/dangling", "nowhere");
    const QString linked = folder.link("linked", root);
    for (const char *relative : {"/c/x.mov", "/c/missing/deep.mov", "/./out/../c/x.mov"}) {
        EXPECT_FALSE(reachesOutsideOrThroughSymlink(root + QLatin1String(relative), root));
    }
    for (const char *relative :
         {"c/x.mov", "", "/..", "/../bc/x.mov", "/out/x.mov", "/c/dangling"}) {
        EXPECT_TRUE(reachesOutsideOrThroughSymlink(root + QLatin1String(relative), root))
            << relative;
    }
    EXPECT_TRUE(
        isInsideWithoutSymlinks(root + QStringLiteral("/c/x.mov"), root + QLatin1Char('/')));
    EXPECT_FALSE(reachesOutsideOrThroughSymlink(linked + QStringLiteral("/c/x.mov"), linked));
    EXPECT_FALSE(
        isInsideWithoutSymlinks(linked + QStringLiteral("/c/x.mov"), linked + QLatin1Char('/')));
}

TEST_F(PathSafetyTest, RecognizesMediaFilesByNameOnly) {
    for (const char *name :
         {"a.mp4", "a.M4V", "a.qt", "a.MXF", "a.mts", "a.ts", "a.b.webm", "a.WAV"}) {
        EXPECT_TRUE(isMediaFile(QStringLiteral("/missing/") + QLatin1String(name))) << name;
    }
    for (const char *name : {"a.txt", "a.jpg", ".mov", "mov", "a.", "a.mov.xml", "a.nosuch"}) {
        EXPECT_FALSE(isMediaFile(QStringLiteral("/a.mov/") + QLatin1String(name))) << name;
    }
}

TEST_F(PathSafetyTest, ChecksASourceInOrder) {
    const QString missing = folder.at("card/missing.mov");
    RootIdentity remounted = withHash(ContentHasher::makeAnchor(clip));
    ++remounted.device;
    EXPECT_EQ(refusal(clip), Kind::notAuthorizedForProject);
    EXPECT_EQ(refusal(folder.folder("dir.txt"), here), Kind::notARegularFile);
    EXPECT_EQ(refusal(folder.link("card/link.mov", clip), here), Kind::notARegularFile);
    EXPECT_EQ(refusal(folder.write("card/notes.txt", "x"), std::nullopt), Kind::notMediaFile);
    EXPECT_EQ(refusal(clip, std::nullopt), Kind::sourcePendingRelink);
    EXPECT_EQ(refusal(clip, elsewhere), Kind::sourceIdentityChanged);
    EXPECT_EQ(refusal(clip, withHash(QString(64, QLatin1Char('0')))), Kind::sourceIdentityChanged);
    EXPECT_EQ(refusal(missing, remounted), Kind::sourceIdentityChanged);
    EXPECT_EQ(refusal(missing, here), std::nullopt);
    EXPECT_EQ(refusal(folder.at("gone/clip.mov"), here), std::nullopt);
    EXPECT_EQ(refusal(clip, withHash(QStringLiteral("no anchor"))), std::nullopt);
    EXPECT_EQ(refusal(clip, remounted), std::nullopt);
    EXPECT_EQ(refusal(folder.at("card/../card/clip.mov")), std::nullopt);
    EXPECT_EQ(Violation(Kind::sourceIdentityChanged, clip, QStringLiteral("source")).description(),
              QStringLiteral("source's folder changed since it was authorized, refusing to use it: "
                             "%1. Re-import or relink it, then try again.")
                  .arg(clip));
}

TEST_F(PathSafetyTest, UsesPreverifiedResultsOnlyForFullAnchors) {
    using ContentHasher::AnchorVerification;
    const RootIdentity full = withHash(ContentHasher::makeAnchor(clip));
    const RootIdentity bare = withHash(ContentHasher::duplicateKey(clip));
    grants.preverifiedAnchors = {{clip, AnchorVerification::mismatches}};
    EXPECT_EQ(refusal(clip, full), Kind::sourceIdentityChanged);
    EXPECT_EQ(refusal(clip, bare), std::nullopt);
    folder.write("card/clip.mov", "take two");
    grants.preverifiedAnchors = {{clip, AnchorVerification::matches}};
    EXPECT_EQ(refusal(clip, full), std::nullopt);
    EXPECT_EQ(refusal(clip, bare), Kind::sourceIdentityChanged);
}

TEST_F(PathSafetyTest, IgnoresFolderChangesInAnAuthorizedMediaFolder) {
    const QString own = folder.write("media/clip.mov", "take one");
    const QString linked = folder.at("media/card/clip.mov");
    folder.link("media/card", folder.at("card"));
    EXPECT_EQ(refusal(own, elsewhere), Kind::sourceIdentityChanged);
    grants.mediaRootAuthorized = true;
    EXPECT_EQ(refusal(own, elsewhere), std::nullopt);
    EXPECT_EQ(refusal(own, std::nullopt), Kind::sourcePendingRelink);
    EXPECT_EQ(refusal(clip, elsewhere), Kind::sourceIdentityChanged);
    EXPECT_EQ(refusal(linked, elsewhere), Kind::sourceIdentityChanged);
    EXPECT_EQ(refusal(own), Kind::notAuthorizedForProject);
}

TEST_F(PathSafetyTest, ComparesVolumesOnlyIfBothAreKnown) {
    const std::optional<QString> one = QStringLiteral("1111-AAAA");
    const std::optional<QString> two = QStringLiteral("2222-BBBB");
    test::FaultyFileSystem volumes;
    const FileSystemScope scope(volumes);
    const auto passes = [&](const std::optional<QString> &then, const std::optional<QString> &now) {
        here.volumeUUID = then;
        volumes.setVolumeUUID(now);
        return !refusal(clip, here);
    };
    EXPECT_TRUE(passes(one, one) && passes(one, std::nullopt) && passes(std::nullopt, two));
    EXPECT_FALSE(passes(one, two));
}

TEST_F(PathSafetyTest, ResolvesCachePathsInsideTheProjectFolderOnly) {
    const QString project = folder.folder("p");
    const QString thumbs = folder.folder("p/.corvane-cache/subclip-thumbs");
    folder.link("p/.corvane-cache/linked", folder.folder("other"));
    const auto resolved = [&](const QString &stored) { return resolveCachePath(stored, project); };
    EXPECT_EQ(resolved(QStringLiteral("subclip-thumbs/a.jpg")), thumbs + QStringLiteral("/a.jpg"));
    EXPECT_EQ(resolved(thumbs + QStringLiteral("/a.jpg")), thumbs + QStringLiteral("/a.jpg"));
    for (const QString &stored :
         {QString(), QStringLiteral("../../etc/x.jpg"), QStringLiteral("/etc/x.jpg"),
          QStringLiteral("linked/a.jpg"), QStringLiteral("..")}) {
        EXPECT_EQ(resolved(stored), std::nullopt) << qPrintable(stored);
    }
    const QString id = QStringLiteral("0B6D6A2E-0000-4000-8000-00000000abcd");
    EXPECT_EQ(subclipThumbnailPath(id, project),
              thumbs + QLatin1Char('/') + id.toUpper() + QStringLiteral(".jpg"));
    for (const QString &bad : {QString(), QStringLiteral("../x"), QStringLiteral("{%1}").arg(id)}) {
        EXPECT_EQ(subclipThumbnailPath(bad, project), std::nullopt) << qPrintable(bad);
    }
}

TEST(ProxyInvariant, RefusesProxiesEvenThroughLinks) {
    using ProxyInvariant::assertNoProxySources;
    const test::TestFolder folder;
    const QString proxy = folder.write("x/.corvane-cache/proxies/d/a.mov", "x");
    const QString plain = folder.write("x/proxies/a.mov", "x");
    EXPECT_NO_THROW(
        assertNoProxySources({plain, folder.at("x/.corvane-cache/thumbs/proxies/missing.mov")}));
    for (const QString &path : {proxy, folder.link("file.mov", proxy),
                                folder.link("cache", folder.at("x/.corvane-cache")) +
                                    QStringLiteral("/proxies/missing.mov"),
                                folder.at("x/.corvane-cache/thumbs/../proxies/missing.mov")}) {
        EXPECT_THROW(assertNoProxySources({plain, path}), ProxyInvariant::Violation)
            << qPrintable(path);
    }
}
