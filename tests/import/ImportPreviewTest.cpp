#include "import/ImportPreview.h"

#include "import/RowImport.h"
#include "support/FaultyFileSystem.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

using namespace corvane;
using corvane::test::TestFolder;

namespace {

ScannedVideo scannedVideo(const char *path, const char *sidecar = nullptr,
                          const char *key = nullptr) {
    ScannedVideo video{.id = newIdentifier(), .url = QString::fromLatin1(path)};
    if (sidecar) {
        video.sidecarURL = QString::fromLatin1(sidecar);
    }
    if (key) {
        video.contentHash = QString::fromLatin1(key);
    }
    return video;
}

/// "name + sidecar, name, ..."
std::string namesOf(const QList<ImportPreviewRow> &rows) {
    QStringList names;
    for (const ImportPreviewRow &row : rows) {
        const QString sidecar = row.proposedSidecarName.value_or(QString());
        names.append(sidecar.isEmpty() ? row.proposedName
                                       : row.proposedName + QStringLiteral(" + ") + sidecar);
    }
    return names.join(QStringLiteral(", ")).toStdString();
}

} // namespace

TEST(ImportPreview, RenamesEquallyNamedVideosTogetherWithTheirSidecars) {
    const TestFolder destination;
    destination.write("C1 (3).MP4", "there");
    destination.write("A2.XML", "there");
    const auto rows = buildPreviewRows(
        {scannedVideo("/a/C1.MP4", "/a/C1M01.XML"), scannedVideo("/b/C1.MP4", "/b/C1M01.XML"),
         scannedVideo("/c/C1.MP4", "/c/C1.b.xmp"), scannedVideo("/c/C1.MOV", "/c/C1M01.XML"),
         scannedVideo("/c/c1.mp4"), scannedVideo("/c/A2.MP4", "/c/A2.XML")},
        std::nullopt, SourceImportMode::copied, destination.path());
    EXPECT_EQ(namesOf(rows), "C1.MP4 + C1M01.XML, C1 (2).MP4 + C1 (2)M01.XML, "
                             "C1 (4).MP4 + C1 (4).b.xmp, C1.MOV + C1M01 (2).XML, "
                             "c1.mp4, A2.MP4 + A2 (2).XML");
    EXPECT_EQ(rows.at(0).status, CollisionStatus::ok);
    EXPECT_EQ(rows.at(1).status, CollisionStatus::renamed);
    EXPECT_EQ(rows.at(5).status, CollisionStatus::ok);
    EXPECT_TRUE(rows.at(1).included);
}

TEST(ImportPreview, FitsNamesOfCopiesToTheirVolume) {
    const TestFolder destination;
    test::FaultyFileSystem files;
    files.setMountTable("1 0 8:1 / / rw - exfat /dev/sda1 rw\n");
    const FileSystemScope scope(files);
    const QList<ScannedVideo> videos{scannedVideo("/a/a?b.mp4", "/a/a?b.xml"),
                                     scannedVideo("/a/a:b.mp4")};
    const auto preview = [&](SourceImportMode mode) {
        return buildPreviewRows(videos, std::nullopt, mode, destination.path());
    };
    EXPECT_EQ(namesOf(preview(SourceImportMode::copied)), "a_b.mp4 + a_b.xml, a_b (2).mp4");
    EXPECT_EQ(preview(SourceImportMode::copied).at(0).status, CollisionStatus::renamed);
    EXPECT_EQ(namesOf(preview(SourceImportMode::inPlace)), "a?b.mp4 + a?b.xml, a:b.mp4");
}

TEST(RowImport, RefusesAFileThatTheVolumeCannotHoldBeforeItIsRead) {
    const TestFolder destination;
    test::FaultyFileSystem files;
    files.setMountTable("1 0 8:1 / / rw - vfat /dev/sda1 rw\n");
    const FileSystemScope scope(files);
    ScannedVideo video = scannedVideo("/card/big.mov");
    video.fileSizeBytes = 5'000'000'000;
    const auto rows =
        buildPreviewRows({video}, std::nullopt, SourceImportMode::copied, destination.path());
    const auto outcome =
        RowImport::copyFiles(rows.first(), RowImport::openDestination(destination.path()), {}, {});
    EXPECT_FALSE(outcome.sourcePath);
    ASSERT_EQ(outcome.failures.size(), 1);
    EXPECT_TRUE(outcome.failures.first().message.startsWith(
        QStringLiteral("big.mov has 5.0 GB, and the drive can't hold files of more than 4.3 GB.")))
        << outcome.failures.first().message.toStdString();
}

TEST(ImportPreview, ExcludesImportedVideosAndReservesNoNamesForThem) {
    Project project;
    project.videos = {VideoRecord{.contentHash = QStringLiteral("k1")}, VideoRecord{}};
    const QList<ScannedVideo> videos{
        scannedVideo("/a/x.mov", nullptr, "k1"), scannedVideo("/b/x.mov", nullptr, "k2"),
        scannedVideo("/c/x.mov", nullptr, "k2"), scannedVideo("/d/y.mov")};
    const auto copied = buildPreviewRows(videos, project, SourceImportMode::copied, std::nullopt);
    EXPECT_EQ(namesOf(copied), "x.mov, x.mov, x (2).mov, y.mov");
    EXPECT_EQ(copied.first().status, CollisionStatus::alreadyImported);
    EXPECT_FALSE(copied.first().included);
    EXPECT_EQ(copied.last().status, CollisionStatus::ok);

    const auto inPlace = buildPreviewRows(videos, project, SourceImportMode::inPlace, std::nullopt);
    EXPECT_EQ(namesOf(inPlace), "x.mov, x.mov, x.mov, y.mov");
    EXPECT_EQ(inPlace.at(2).status, CollisionStatus::ok);
    EXPECT_EQ(inPlace.first().status, CollisionStatus::alreadyImported);
}
