#pragma once

#include "import/ImportSheet.h"
#include "support/Await.h"
#include "support/FaultyFileSystem.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"

#include <gmock/gmock.h>

#include <semaphore>

namespace corvane::test {

/// Answers each panel with the paths that were set before; none is a panel that was cancelled.
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

/// Holds the copy of one file up until it is let go on.
class HeldCopy {
  public:
    explicit HeldCopy(const QString &fileName) {
        m_files.setObserver([this, fileName](const QString &operation, const QString &path) {
            if (operation == QLatin1String("openFileAt") && path == fileName) {
                EXPECT_TRUE(m_mayGoOn.try_acquire_for(std::chrono::minutes(1)));
            }
        });
    }
    void letGo() { m_mayGoOn.release(); }

  private:
    std::counting_semaphore<> m_mayGoOn{0};
    FaultyFileSystem m_files;
    FileSystemScope m_scope{m_files};
};

/// The state of the import's sheet for a new project, with a folder "cards" beside it.
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
    ImportSheet flow{import, panels, clock};
};

} // namespace corvane::test
