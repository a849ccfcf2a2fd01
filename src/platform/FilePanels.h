#pragma once

#include <QStringList>

#include <functional>
#include <optional>

namespace corvane {

/// The file panels that the program asks its user with, so that a test can answer in their place.
/// One panel is up at a time; a request made while one is up brings nothing. A panel that is
/// cancelled calls nobody back. Main thread.
class FilePanels {
  public:
    /// What is asked where something new is to be put.
    struct SavePanel {
        QString message;
        QString nameFieldLabel; ///< empty for the desktop's own
        QString proposedName;
        bool choosesProjectFile = false; ///< else a folder's name is chosen

        bool operator==(const SavePanel &) const = default;
    };
    /// What is asked where something that exists is to be chosen.
    struct ChoosePanel {
        QString message;
        QString acceptLabel = QStringLiteral("Choose");
        QString startFolder = {}; ///< empty for where the last panel ended

        bool operator==(const ChoosePanel &) const = default;
    };
    using Chosen = std::function<void(const QString &path)>;
    using ChosenFiles = std::function<void(const QStringList &paths)>; ///< at least one

    virtual ~FilePanels();

    /// One existing file with the extension "corvane".
    virtual void openProjectFile(Chosen chosen) = 0;
    /// A place and a name; the panel lets folders be created.
    virtual void save(const SavePanel &panel, Chosen chosen) = 0;
    /// One existing folder.
    virtual void chooseFolder(const ChoosePanel &panel, Chosen chosen) = 0;
    /// Existing files.
    virtual void chooseFiles(const ChoosePanel &panel, ChosenFiles chosen) = 0;
};

} // namespace corvane
