#include "document/BackupService.h"
#include "document/ProjectFileIO.h"
#include "document/ProjectRegistry.h"
#include "support/Await.h"
#include "support/SampleProject.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace corvane;
using namespace corvane::test;
using namespace std::chrono_literals;

namespace {

class BackupServiceTest : public testing::Test {
  protected:
    TestFolder folder;
    TestClock clock;
    BackupService backups{clock};
    Project project = sampleProject(1);
};

} // namespace

TEST_F(BackupServiceTest, KeepsTheNewestThreeOfThisProject) {
    project.filePath = folder.at("a.b.corvane");
    const QStringList others{QStringLiteral("a.c.2020-01-01T00-00-00.000Z.corvane.bak"),
                             QStringLiteral("a.b.v2.2020-01-01T00-00-00.000Z.corvane.bak"),
                             QStringLiteral("a.b.2020-01-01.corvane.bak")};
    for (const QString &other : others) {
        folder.write(other, "not a backup of this project");
    }
    QStringList written;
    for (int i = 0; i < 4; ++i) {
        written.append(await(backups.write(project)));
        clock.advance(1s);
    }
    EXPECT_EQ(written.at(0), folder.at("a.b.2026-03-01T09-30-12.345Z.corvane.bak"));
    EXPECT_FALSE(folder.has("a.b.2026-03-01T09-30-12.345Z.corvane.bak"));
    EXPECT_EQ(folder.names().size(), 3 + others.size());
    EXPECT_EQ(ProjectFileIO::loadNow(written.at(3)).videos, project.videos);
}

TEST_F(BackupServiceTest, KeepsTheNewBackupEvenIfOthersHaveLaterDates) {
    project.filePath = folder.at("a.corvane");
    const auto later = std::filesystem::file_time_type::clock::now() + std::chrono::hours(48);
    for (int i = 0; i < 3; ++i) {
        const QString old = folder.write(
            QStringLiteral("a.2020-01-0%1T00-00-00.000Z.corvane.bak").arg(i + 1), "old");
        std::filesystem::last_write_time(old.toStdString(), later);
    }
    const QString written = await(backups.write(project));
    EXPECT_TRUE(fileSystem().linkStatus(written));
    EXPECT_EQ(folder.names().size(), 3);
}

TEST_F(BackupServiceTest, ReportsThePathOfAFailedWrite) {
    project.filePath = folder.at("gone/a.corvane");
    const QString path = folder.at("gone/a.2026-03-01T09-30-12.345Z.corvane.bak");
    EXPECT_THAT([&] { await(backups.write(project)); },
                testing::ThrowsMessage<BackupService::BackupError>("Backup write failed at " +
                                                                   path.toStdString() +
                                                                   ": No such file or directory"));
}

TEST(ProjectRegistry, ListsEachFileOnceAndSurvivesADamagedFile) {
    const TestFolder folder;
    TestClock clock;
    folder.write("registry.json", "[{]");
    const Project project = sampleProject(2);
    {
        ProjectRegistry registry(folder.path(), clock);
        EXPECT_TRUE(await(registry.summaries()).isEmpty());
        await(registry.touch(project, QStringLiteral("/a.corvane")));
        clock.advance(1s);
        await(registry.touch(project, QStringLiteral("/b.corvane")));
        clock.advance(1s);
        await(registry.touch(project, QStringLiteral("/a.corvane")));
    }
    ProjectRegistry registry(folder.path(), clock);
    const auto list = newestFirst(await(registry.summaries()));
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list.at(0).filePath, QStringLiteral("/a.corvane"));
    EXPECT_EQ(list.at(0).videoCount, 2);
    EXPECT_EQ(await(registry.remove(QStringLiteral("/a.corvane"))).size(), 1);
}
