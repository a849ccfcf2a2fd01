#pragma once

#include "import/ImportSheet.h"
#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"
#include "support/TestPanels.h"

#include <gmock/gmock.h>

#include <semaphore>

namespace corvane::test {

/// Blocks the copy of one file until `resume`.
class BlockedCopy {
  public:
    explicit BlockedCopy(const QString &fileName) {
        m_files.setObserver([this, fileName](const QString &operation, const QString &path) {
            if (operation == QLatin1String("openFileAt") && path == fileName) {
                EXPECT_TRUE(m_canResume.try_acquire_for(std::chrono::minutes(1)));
            }
        });
    }
    void resume() { m_canResume.release(); }

  private:
    std::counting_semaphore<> m_canResume{0};
    FaultyFileSystem m_files;
    FileSystemScope m_scope{m_files};
};

/// An import into a new project, with the project in a folder "p".
class ImportTest : public testing::Test {
  protected:
    ImportTest() { await(store.createProject({.name = QStringLiteral("Shoot")}, projectFile)); }

    QString at(QAnyStringView relative) const { return folder.at(relative); }

    TestFolder folder;
    QString projectFile = folder.folder("p") + QStringLiteral("/shoot.corvane");
    TestClock clock;
    ProjectFileIO io;
    ProjectRegistry registry{at("data"), clock};
    BackupService backups{clock};
    MediaSourceAuthorization authorization{at("data")};
    ProjectStore store{io, registry, backups, authorization, clock};
    ImportViewModel import{&store};
};

/// The import sheet, with a folder "cards" beside the project's.
class ImportSheetFixture : public ImportTest {
  protected:
    QString cards = folder.folder("cards");
    TestPanels panels;
    ImportSheet sheet{import, panels, clock};
};

} // namespace corvane::test
