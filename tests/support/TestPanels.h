#pragma once

#include "platform/FilePanels.h"

namespace corvane::test {

/// Answers each panel with the path `answer`; cancels it if that is empty.
class TestPanels : public FilePanels {
  public:
    void openProjectFile(Chosen chosen) override { answerWith(std::move(chosen)); }
    void save(const SavePanel &panel, Chosen chosen) override {
        asked = panel;
        answerWith(std::move(chosen));
    }

    void chooseFolder(const ChoosePanel &panel, Chosen chosen) override {
        choice = panel;
        answerWith(std::move(chosen));
    }
    void chooseFiles(const ChoosePanel &panel, ChosenFiles chosen) override {
        choice = panel;
        answerWith([this, chosen = std::move(chosen)](const QString &path) {
            chosen(files.isEmpty() ? QStringList(path) : files);
        });
    }

    QString answer;
    QStringList files; ///< for `chooseFiles`; empty for `answer` alone
    SavePanel asked;
    ChoosePanel choice;
    int shown = 0;

  private:
    void answerWith(Chosen chosen) {
        ++shown;
        if (!answer.isEmpty()) {
            chosen(answer);
        }
    }
};

} // namespace corvane::test
