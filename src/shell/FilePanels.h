#pragma once

#include <QString>

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
    using Chosen = std::function<void(const QString &path)>;

    virtual ~FilePanels();

    /// One existing file with the extension "corvane".
    virtual void openProjectFile(Chosen chosen) = 0;
    /// A place and a name; the panel lets folders be created.
    virtual void save(const SavePanel &panel, Chosen chosen) = 0;
};

} // namespace corvane
