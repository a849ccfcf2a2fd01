#include "platform/VolumeLimits.h"
#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::FaultyFileSystem;
using corvane::test::TestFolder;

TEST(VolumeLimits, FollowTheTypeOfTheVolumeThatWillContainTheFolder) {
    const TestFolder folder;
    const auto fat = std::optional((qint64(1) << 32) - 1);
    const std::tuple<const char *, bool, std::optional<qint64>> volumes[] = {
        {"ext4", false, {}}, {"vfat", true, fat},   {"msdos", true, fat},
        {"exfat", true, {}}, {"fuseblk", true, {}}, {"nfs4", false, {}},
    };
    for (const auto &[type, restrictsNames, maxFileSize] : volumes) {
        FaultyFileSystem files;
        files.setMountTable(QByteArray("1 0 8:1 / / rw - ") + type + " /dev/sda1 rw\n");
        const FileSystemScope scope(files);
        const VolumeLimits limits = VolumeLimits::of(folder.at("not/created/yet"));
        EXPECT_EQ(limits.restrictsNames, restrictsNames) << type;
        EXPECT_EQ(limits.maxFileSize, maxFileSize) << type;
    }
}

TEST(VolumeLimits, FitNamesBySuffixCharactersAndBytes) {
    const auto repeated = [](const char *text, int count) {
        return QString::fromUtf8(text).repeated(count);
    };
    const QString suffix = QStringLiteral(" (2)");
    const QString mov = QStringLiteral(".mov");
    const std::tuple<bool, QString, QString, QString> cases[] = {
        {false, QStringLiteral("a?b:c.mp4"), {}, QStringLiteral("a?b:c.mp4")},
        {true, QStringLiteral("a?b:c*<>|\"\\.mp4"), suffix, QStringLiteral("a_b_c______ (2).mp4")},
        {true, QStringLiteral("take. ."), {}, QStringLiteral("take")},
        {true, QStringLiteral("..."), {}, QStringLiteral("_")},
        {false, repeated("x", 247) + mov, {}, repeated("x", 247) + mov},
        {false, repeated("x", 247) + mov, suffix, repeated("x", 243) + suffix + mov},
        {false, repeated("ü", 124) + mov, suffix, repeated("ü", 121) + suffix + mov},
        {false, repeated("🎬", 62) + mov, {}, repeated("🎬", 61) + mov},
        {false, QStringLiteral("a.") + repeated("x", 250), suffix,
         QStringLiteral("a.") + repeated("x", 241) + suffix},
    };
    for (const auto &[restrictsNames, name, added, expected] : cases) {
        const VolumeLimits limits{.restrictsNames = restrictsNames};
        EXPECT_EQ(limits.fittedName(name, added), expected) << name.toStdString();
        EXPECT_LE(expected.toUtf8().size(), 255);
    }
}
