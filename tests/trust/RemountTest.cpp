#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"
#include "trust/MediaSourceAuthorization.h"

#include <gtest/gtest.h>

#include <QDir>

using namespace corvane;
using corvane::test::await;
using Kind = PathSafety::Violation::Kind;

namespace {

/// A card with one clip that is granted to a project, in a fake mount table.
class RemountTest : public testing::Test {
  protected:
    /// Mounts a card with the same files. As on FAT, its folders get other inodes.
    void mount(const char *type, const char *uuid, const char *mountPoint = "card") {
        static int device = 16;
        if (folder.has(mountPoint)) {
            ASSERT_TRUE(QDir().rename(folder.at(mountPoint),
                                      folder.at(QStringLiteral("ejected-%1").arg(device))));
        }
        folder.write(QLatin1String(mountPoint) + QStringLiteral("/DCIM/clip.mov"), "take one");
        files.setMountTable(QByteArray("1 0 254:0 / / rw - ext4 /dev/vda1 rw\n2 1 8:") +
                            QByteArray::number(++device) + " / " + folder.at(mountPoint).toUtf8() +
                            " rw - " + type + " /dev/sdb1 rw\n");
        files.setVolumeUUID(*uuid ? std::optional(QString::fromLatin1(uuid)) : std::nullopt);
    }
    void grant() {
        await(registry.authorize({clip}, project));
        await(registry.authorizeMediaRoot(folder.at("card"), project));
    }
    /// Stores the grant as a version without paths on volumes did.
    void grantWithoutPath(const std::optional<QString> &uuid, bool hasAnchor) {
        auto &entry = older.authorizedSourcePaths[clip];
        entry = PathSafety::folderIdentity(folder.at("card/DCIM"));
        entry->volumePath.reset();
        entry->volumeUUID = uuid;
        entry->contentHash =
            hasAnchor ? ContentHasher::makeAnchor(clip) : ContentHasher::duplicateKey(clip);
    }
    std::optional<Kind> refusal(const PathSafety::SourceGrants &grants) const {
        try {
            PathSafety::validateSource(clip, grants, QStringLiteral("export source"));
            return std::nullopt;
        } catch (const PathSafety::Violation &violation) {
            return violation.kind();
        }
    }
    std::optional<Kind> refusal() { return refusal(await(registry.sourceGrants(project))); }
    bool isMediaRoot() { return await(registry.isMediaRootAuthorized(folder.at("card"), project)); }

    test::TestFolder folder;
    test::FaultyFileSystem files;
    FileSystemScope scope{files};
    QString project = folder.write("p/shoot.corvane", "{}");
    QString clip = folder.at("card/DCIM/clip.mov");
    MediaSourceAuthorization registry{folder.at("data")};
    PathSafety::SourceGrants older{.projectFolder = folder.at("p")};
};

} // namespace

TEST_F(RemountTest, KeepsTheGrantsOfACardWhereverItIsMountedAgain) {
    for (const char *type : {"exfat", "vfat", "fuseblk"}) {
        mount(type, "1111-AAAA");
        grant();
        mount(type, "1111-AAAA");
        EXPECT_EQ(refusal(), std::nullopt) << type;
        EXPECT_TRUE(isMediaRoot()) << type;

        ASSERT_TRUE(QDir(folder.at("card")).removeRecursively());
        mount(type, "1111-AAAA", "usb");
        folder.link("card", folder.at("usb"));
        EXPECT_EQ(refusal(), std::nullopt) << type;
        ASSERT_TRUE(QFile::remove(folder.at("card")));
    }
}

TEST_F(RemountTest, RefusesAnotherCardWithTheSameFiles) {
    mount("exfat", "1111-AAAA");
    grant();
    mount("exfat", "2222-BBBB");
    EXPECT_EQ(refusal(), Kind::sourceIdentityChanged);
    EXPECT_FALSE(isMediaRoot());
    mount("exfat", ""); // perhaps another one
    EXPECT_EQ(refusal(), Kind::sourceIdentityChanged);
    mount("exfat", "1111-AAAA");
    folder.write("card/DCIM/clip.mov", "take two");
    EXPECT_EQ(refusal(), Kind::sourceIdentityChanged);
}

TEST_F(RemountTest, ComparesInodesIfTheyAreStableOrTheVolumeIsUnknown) {
    for (const auto &[type, uuid] : std::initializer_list<std::pair<const char *, const char *>>{
             {"ext4", "1111-AAAA"}, {"exfat", ""}}) {
        mount(type, uuid);
        grant();
        EXPECT_EQ(refusal(), std::nullopt) << type;
        mount(type, uuid);
        EXPECT_EQ(refusal(), Kind::sourceIdentityChanged) << type;
        EXPECT_FALSE(isMediaRoot()) << type;
    }
}

TEST_F(RemountTest, AcceptsAnOlderGrantWithTheSameVolumeAndAFullAnchor) {
    const std::optional<QString> uuid = QStringLiteral("1111-AAAA");
    struct Case {
        const char *type;
        std::optional<QString> uuid;
        bool hasAnchor;
        bool isAccepted;
    };
    for (const Case &each : std::initializer_list<Case>{{"exfat", uuid, true, true},
                                                        {"exfat", uuid, false, false},
                                                        {"exfat", std::nullopt, true, false},
                                                        {"ext4", uuid, true, false}}) {
        mount(each.type, "1111-AAAA");
        grantWithoutPath(each.uuid, each.hasAnchor);
        EXPECT_EQ(refusal(older), std::nullopt);
        mount(each.type, "1111-AAAA");
        EXPECT_EQ(!refusal(older), each.isAccepted) << each.type << each.hasAnchor;
        mount(each.type, "2222-BBBB");
        EXPECT_EQ(refusal(older), Kind::sourceIdentityChanged) << each.type << each.hasAnchor;
    }
}
