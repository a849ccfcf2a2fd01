#pragma once

#include "import/ImportSheet.h"
#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <semaphore>

namespace corvane::test {

/// Answers every panel with `paths`; cancels it if they are empty.
class PathPanels : public FilePanels {
  public:
    void openProjectFile(Chosen) override {}
    void save(const SavePanel &, Chosen) override {}
    void chooseFolder(const ChoosePanel &, Chosen chosen) override {
        if (!paths.isEmpty()) {
            chosen(paths.first());
        }
    }
    void chooseFiles(const ChoosePanel &, ChosenFiles chosen) override {
        if (!paths.isEmpty()) {
            chosen(paths);
        }
    }

    QStringList paths;
};

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

/// The import sheet of a new project, with a folder "cards" beside it.
class ImportSheetFixture : public testing::Test {
  protected:
    ImportSheetFixture() {
        await(store.createProject({.name = QStringLiteral("Shoot")}, projectFile));
    }

    QString at(const QString &relative) const { return folder.at(relative); }

    TestFolder folder;
    QString projectFile = folder.folder(QStringLiteral("p")) + QStringLiteral("/shoot.corvane");
    QString cards = folder.folder(QStringLiteral("cards"));
    TestClock clock;
    ProjectFileIO io;
    ProjectRegistry registry{at(QStringLiteral("data")), clock};
    BackupService backups{clock};
    MediaSourceAuthorization authorization{at(QStringLiteral("data"))};
    ProjectStore store{io, registry, backups, authorization, clock};
    ImportViewModel import{&store};
    PathPanels panels;
    ImportSheet sheet{import, panels, clock};
};

} // namespace corvane::test
