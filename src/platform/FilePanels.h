#pragma once

#include <QStringList>
#include <QUrl>

#include <functional>

namespace corvane {

/// The desktop's panels for choosing files. An interface, so that a test can answer instead of a
/// user.
///
/// Each function opens a panel and returns at once; the callback runs when the user has chosen. It
/// doesn't run if the user cancels, or if another panel is open already. Main thread.
class FilePanels {
  public:
    /// The options of a panel for a new file or folder.
    struct SavePanel {
        QString message;
        QString nameFieldLabel; ///< empty: the desktop's default
        QString proposedName;
        bool choosesProjectFile = false; ///< otherwise a folder

        bool operator==(const SavePanel &) const = default;
    };
    /// The options of a panel for existing files or folders.
    struct ChoosePanel {
        QString message;
        QString acceptLabel = QStringLiteral("Choose");
        QString startFolder = {}; ///< empty: the last panel's folder

        bool operator==(const ChoosePanel &) const = default;
    };
    using Chosen = std::function<void(const QString &path)>;
    using ChosenFiles = std::function<void(const QStringList &paths)>; ///< at least one

    virtual ~FilePanels() = default;

    /// Asks for an existing file with the extension "corvane".
    virtual void openProjectFile(Chosen chosen) = 0;
    /// Asks for a folder and a new name in it. The panel can create folders.
    virtual void save(const SavePanel &panel, Chosen chosen) = 0;
    /// Asks for an existing folder.
    virtual void chooseFolder(const ChoosePanel &panel, Chosen chosen) = 0;
    /// Asks for existing files.
    virtual void chooseFiles(const ChoosePanel &panel, ChosenFiles chosen) = 0;
};

/// The paths of the URLs that are local files, for items that were chosen or dropped.
inline QStringList localPaths(const QList<QUrl> &urls) {
    QStringList paths;
    for (const QUrl &url : urls) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    return paths;
}

} // namespace corvane
