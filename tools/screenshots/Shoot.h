#pragma once

#include "shell/CorvaneApp.h"
#include "shell/project/ProjectScreen.h"

#include <QTemporaryDir>

namespace corvane {

/// Answers each panel with the path that is set.
class FixedPanels : public FilePanels {
  public:
    void openProjectFile(Chosen chosen) override { chosen(answer); }
    void save(const SavePanel &, Chosen chosen) override { chosen(answer); }
    void chooseFolder(const ChoosePanel &, Chosen chosen) override { chosen(answer); }
    void chooseFiles(const ChoosePanel &, ChosenFiles chosen) override { chosen({answer}); }

    QString answer;
};

/// The project of the pictures: footage that was made, imported and reviewed as a user would have
/// done it, once for all pictures, which are taken one after another. It lasts as long as the
/// process.
class Shoot {
  public:
    /// The clip that stands in the player.
    static constexpr const char *kMain = "A003_C002_0612.MOV";

    /// Made at the first call, which takes about a minute. Throws a failure where it can't be.
    static Shoot &shared();

    /// A path in the shoot's folder.
    QString path(const char *name) const;
    QString projectFile() const;
    QString projectFolder() const;
    /// The application over the project, with what it remembers; silent.
    std::unique_ptr<CorvaneApp> makeApp(FilePanels *panels = nullptr) const;
    /// The id of the clip with that file name in the open project.
    static QString clip(CorvaneApp &app, const char *fileName);

    /// A card with footage that is partly new, for an import.
    QString freshCard();

  private:
    Shoot();
    void importAll(CorvaneApp &app, SourceImportMode mode) const;
    void review(CorvaneApp &app) const;

    QTemporaryDir m_folder;
};

} // namespace corvane
