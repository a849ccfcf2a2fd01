#pragma once

#include "shell/CorvaneApp.h"
#include "shell/project/ProjectScreen.h"

#include <QTemporaryDir>

namespace corvane {

/// Answers every file panel with `answer`.
class FixedPanels : public FilePanels {
  public:
    void openProjectFile(Chosen chosen) override { chosen(answer); }
    void save(const SavePanel &, Chosen chosen) override { chosen(answer); }
    void chooseFolder(const ChoosePanel &, Chosen chosen) override { chosen(answer); }
    void chooseFiles(const ChoosePanel &, ChosenFiles chosen) override { chosen({answer}); }

    QString answer;
};

/// The project in the screenshots: generated footage, imported and reviewed. Created once per
/// process and shared by all screenshots.
class SampleShoot {
  public:
    /// The clip in the player.
    static constexpr const char *kMainClip = "A003_C002_0612.MOV";

    /// Created by the first call, which takes about a minute. Throws `Failure`.
    static SampleShoot &shared();

    /// A path in the shoot's folder.
    QString path(const char *name) const;
    QString projectFile() const;
    QString projectFolder() const;
    /// An application with the shoot's data folder, without audio.
    std::unique_ptr<CorvaneApp> makeApp(FilePanels *panels = nullptr) const;
    /// The id of the clip with this file name in the open project. Throws `Failure` if there is
    /// none.
    static QString clip(CorvaneApp &app, const char *fileName);

    /// The path of a card with new clips and clips that are already imported.
    QString cardWithNewClips();

  private:
    SampleShoot();
    void importAll(CorvaneApp &app, SourceImportMode mode) const;
    void review(CorvaneApp &app) const;

    QTemporaryDir m_folder;
};

} // namespace corvane
