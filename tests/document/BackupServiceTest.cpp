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

TEST(BackupService, KeepsTheNewestThreeOfThisProject) {
    const TestFolder folder;
    TestClock clock;
    BackupService backups(clock);
    Project project = sampleProject(1);
    project.filePath = folder.at(QStringLiteral("a.b.corvane"));
    folder.write(QStringLiteral("a.c.2020-01-01T00-00-00.000Z.corvane.bak"), "another project's");
    QStringList written;
    for (int i = 0; i < 4; ++i) {
        written.append(await(backups.write(project)));
        clock.advance(1s);
    }
    EXPECT_EQ(written.at(0), folder.at(QStringLiteral("a.b.2026-03-01T09-30-12.345Z.corvane.bak")));
    EXPECT_FALSE(folder.has(QStringLiteral("a.b.2026-03-01T09-30-12.345Z.corvane.bak")));
    EXPECT_EQ(folder.names().size(), 4);
    EXPECT_EQ(ProjectFileIO::loadNow(written.at(3)).videos, project.videos);
}

TEST(BackupService, KeepsTheNewBackupEvenIfOthersHaveLaterDates) {
    const TestFolder folder;
    TestClock clock;
    BackupService backups(clock);
    Project project = sampleProject(1);
    project.filePath = folder.at(QStringLiteral("a.corvane"));
    const auto later = std::filesystem::file_time_type::clock::now() + std::chrono::hours(48);
    for (int i = 0; i < 3; ++i) {
        const QString old = folder.write(QStringLiteral("a.%1.corvane.bak").arg(i), "old");
        std::filesystem::last_write_time(old.toStdString(), later);
    }
    const QString written = await(backups.write(project));
    EXPECT_TRUE(fileSystem().linkStatus(written));
    EXPECT_EQ(folder.names().size(), 3);
}

TEST(BackupService, ReportsThePathOfAFailedWrite) {
    const TestFolder folder;
    TestClock clock;
    BackupService backups(clock);
    Project project = sampleProject(1);
    project.filePath = folder.at(QStringLiteral("gone/a.corvane"));
    try {
        await(backups.write(project));
        FAIL();
    } catch (const BackupService::BackupError &error) {
        EXPECT_EQ(
            error.description(),
            QStringLiteral("Backup write failed at %1: No such file or directory")
                .arg(folder.at(QStringLiteral("gone/a.2026-03-01T09-30-12.345Z.corvane.bak"))));
    }
}

TEST(ProjectRegistry, ListsEachFileOnceAndSurvivesADamagedFile) {
    const TestFolder folder;
    TestClock clock;
    folder.write(QStringLiteral("registry.json"), "[{]");
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
