#include "platform/FolderIdentity.h"

#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <sys/sysmacros.h>

using namespace corvane;

namespace {

const QByteArray kTable =
    "21 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda1 rw,discard\n"
    "22 21 8:17 / /media/my\\040card rw,nosuid shared:2 master:1 - vfat /dev/sdb1 rw,utf8\n"
    "23 21 8:17 /DCIM /srv/bind rw - vfat /dev/sdb1 rw,utf8\n"
    "24 21 8:33 / /media/my\\040card rw - vfat /dev/sdc1 rw\n"
    "25 21 0:51 / /mnt/nas rw - cifs //nas/footage rw,vers=3.0\n"
    "broken line\n";

std::optional<QString> onVolume(quint64 id, const char *path) {
    const auto mount = mountWithId(kTable, id);
    return mount ? mount->pathOnVolume(path) : std::nullopt;
}

/// Two mounts of the same folder in a fake table. The second call for the mount returns another
/// one, as if the card had been swapped.
class SwappingFileSystem : public SystemFileSystem {
  public:
    MountedPath mountedPath(const Descriptor &file) const override {
        MountedPath location = SystemFileSystem::mountedPath(file);
        location.mount = mountWithId(kTable, isSwapped ? 24 : 22);
        isSwapped = true;
        return location;
    }

  private:
    mutable bool isSwapped = false;
};

} // namespace

TEST(MountTable, FindsMountsByIdAndByPath) {
    const auto card = mountWithId(kTable, 22);
    ASSERT_TRUE(card);
    EXPECT_EQ(*card,
              (Mount{22, makedev(8, 17), "/", "/media/my card", "vfat", "/dev/sdb1", "rw,utf8"}));
    EXPECT_EQ(mountWithId(kTable, 2), std::nullopt);
    for (const auto &[path, id] :
         std::initializer_list<std::pair<const char *, quint64>>{{"/media/my card/DCIM", 24},
                                                                 {"/media/my cardboard", 21},
                                                                 {"/", 21},
                                                                 {"/srv/bind", 23}}) {
        EXPECT_EQ(mountContaining(kTable, path).value_or(Mount()).id, id) << path;
    }
    EXPECT_EQ(mountContaining("", "/media"), std::nullopt);
}

TEST(MountTable, ReturnsTheSamePathOnTheVolumeForEveryMountPoint) {
    const QString folder = QStringLiteral("/DCIM/100");
    EXPECT_EQ(onVolume(22, "/media/my card/DCIM/100"), folder);
    EXPECT_EQ(onVolume(23, "/srv/bind/100"), folder);
    EXPECT_EQ(onVolume(21, "/DCIM/100"), folder);
    EXPECT_EQ(onVolume(22, "/media/my card"), QStringLiteral("/"));
    EXPECT_EQ(onVolume(23, "/srv/bind"), QStringLiteral("/DCIM"));
    for (const char *path : {"/media/my cards/DCIM", "/media", "", "/media/my card/\xFF"}) {
        EXPECT_EQ(onVolume(22, path), std::nullopt) << path;
    }
}

TEST(MountTable, KnowsFileSystemsWithoutStableInodesAndTheirShares) {
    struct Case {
        const char *type;
        const char *source;
        const char *options;
        bool isStable;
        const char *share; ///< empty for nullopt
    };
    for (const Case &each : std::initializer_list<Case>{
             {"ext4", "/dev/vda1", "rw", true, ""},
             {"btrfs", "/dev/vda1", "rw,subvol=/@", true, ""},
             {"xfs", "/dev/vda1", "rw", true, ""},
             {"nfs4", "nas:/footage", "rw", true, ""},
             {"cifs", "//nas/footage", "rw,serverino,vers=3.0", true, ""},
             {"cifs", "//nas/footage", "rw,noserverino", false, "//nas/footage"},
             {"smb3", "//nas/footage", "rw", false, "//nas/footage"},
             {"vfat", "/dev/sdb1", "rw", false, ""},
             {"msdos", "/dev/sdb1", "rw", false, ""},
             {"exfat", "/dev/sdb1", "rw", false, ""},
             {"fuseblk", "/dev/sdb1", "rw", false, ""},
             {"fuse", "/dev/sdb1", "rw", false, ""},
             {"fuse.sshfs", "ann@nas:/footage", "rw", false, "ann@nas:/footage"},
             {"fuse.gvfsd-fuse", "gvfsd-fuse", "rw", false, "gvfsd-fuse"},
             {"fuse.mergerfs", "/a:/b", "rw", false, ""},
             {"fuse.gocryptfs", "/home/ann/cipher", "rw", false, ""}}) {
        const Mount mount{.type = each.type, .source = each.source, .options = each.options};
        EXPECT_EQ(mount.hasStableInodes(), each.isStable) << each.type << ' ' << each.options;
        EXPECT_EQ(mount.share().value_or(QString()), QLatin1String(each.share)) << each.type;
    }
}

TEST(FolderIdentity, ComparesInodesOnVolumesOrPathsOnVolumes) {
    const std::optional<QString> a = QStringLiteral("1111-AAAA");
    const std::optional<QString> b = QStringLiteral("2222-BBBB");
    const std::optional<QString> path = QStringLiteral("/DCIM");
    const std::optional<QString> lowerCase = QStringLiteral("/dcim");
    struct Case {
        FolderIdentity recorded;
        FolderIdentity current;
        bool isSame;
    };
    const Case cases[] = {
        {{1, 2, a, {}}, {9, 2, a, {}}, true},
        {{1, 2, a, {}}, {1, 3, a, {}}, false},
        {{1, 2, a, {}}, {1, 2, b, {}}, false},
        {{1, 2, a, {}}, {1, 2, {}, {}}, true},
        {{1, 2, {}, {}}, {1, 2, b, {}}, true},
        {{1, 2, a, path}, {9, 8, a, path}, true},
        {{1, 2, a, path}, {9, 8, a, lowerCase}, true},
        {{1, 2, a, path}, {1, 2, a, QStringLiteral("/DCIM/1")}, false},
        {{1, 2, a, path}, {1, 2, b, path}, false},
        {{1, 2, a, path}, {1, 2, {}, {}}, false}, // every FAT root has inode 1
        {{1, 2, a, path}, {9, 2, a, {}}, true},   // another driver, with stable inodes
        {{1, 2, a, path}, {9, 3, a, {}}, false},
        {{1, 2, a, {}}, {9, 2, a, path}, true},
        {{1, 2, {}, {}}, {9, 2, a, path}, true},
        {{1, 2, a, {}}, {9, 3, a, path}, false},
        {{1, 2, {}, path}, {1, 2, {}, path}, false},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(cases[i].recorded.isSameFolder(cases[i].current), cases[i].isSame)
            << "case " << i;
    }
}

TEST(FolderIdentity, IsUnknownIfTheMountChangesWhileItIsRead) {
    const test::TestFolder folder;
    SwappingFileSystem files;
    const FileSystemScope scope(files);
    const Descriptor opened = files.openFolder(folder.path());
    EXPECT_EQ(FolderIdentity::of(opened), std::nullopt);
    EXPECT_NE(FolderIdentity::of(opened), std::nullopt);
}
