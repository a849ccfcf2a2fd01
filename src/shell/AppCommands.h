#pragma once

#include "session/ProjectStore.h"
#include "shell/AppCommand.h"
#include "shell/AppRequests.h"
#include "shell/UpdaterController.h"

namespace corvane {

/// A line of a menu: a command, a divider or the submenu of recent projects.
struct MenuEntry {
    Q_GADGET
    Q_PROPERTY(corvane::AppCommand *command MEMBER command CONSTANT)
    Q_PROPERTY(bool isDivider READ isDivider CONSTANT)
    Q_PROPERTY(bool isRecentProjects MEMBER isRecentProjects CONSTANT)
    Q_PROPERTY(int mnemonic MEMBER mnemonic CONSTANT)

  public:
    AppCommand *command = nullptr; ///< nullptr for a divider and for the submenu
    bool isRecentProjects = false; ///< the submenu "Open Recent"
    int mnemonic = -1;             ///< index in the label of the letter that chooses it, or -1

    bool isDivider() const { return !command && !isRecentProjects; }
};

struct AppMenu {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(int mnemonic MEMBER mnemonic CONSTANT)
    Q_PROPERTY(QVariantList entries READ entryValues CONSTANT)

  public:
    QString title;
    QList<MenuEntry> entries;
    int mnemonic = -1; ///< index in the title of the letter that opens the menu with Alt, or -1

    QVariantList entryValues() const;
};

/// All commands of the program and the menus that contain them. Commands follow the state of the
/// session: they are enabled while they can run. The constructor's arguments must outlive this
/// object. Main thread only.
class AppCommands : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantList all READ all CONSTANT)
    Q_PROPERTY(QVariantList menus READ menuValues CONSTANT)
    Q_PROPERTY(bool isFullScreen READ isFullScreen WRITE setFullScreen NOTIFY fullScreenChanged)
    Q_PROPERTY(QString openRecentLabel READ openRecentLabel CONSTANT)
    Q_PROPERTY(QString noRecentProjectsLabel READ noRecentProjectsLabel CONSTANT)

  public:
    AppCommands(ProjectStore &store, UpdaterController &updater, AppRequests &requests,
                QObject *parent = nullptr);

    const QList<AppMenu> &menus() const { return m_menus; }
    QVariantList menuValues() const;
    QVariantList all() const;
    /// The command with this id, such as "saveProject", or nullptr.
    Q_INVOKABLE corvane::AppCommand *command(const QString &id) const;

    /// True if the main window fills the screen. The window and the command "fullScreen" set it.
    bool isFullScreen() const { return m_isFullScreen; }
    void setFullScreen(bool isFullScreen);

    static QString openRecentLabel() { return QStringLiteral("Open Recent"); }
    static QString noRecentProjectsLabel() { return QStringLiteral("No recent projects"); }

  Q_SIGNALS:
    void helpRequested();
    void quitRequested(); ///< close the main window, as its close button does
    void fullScreenChanged();

  private:
    void add(AppCommand::Text text, std::function<void()> action);
    void add(const char *id, const QString &label, const char *shortcut,
             std::function<void()> action);
    void addWindowCommands();
    void addProjectCommands(AppRequests &requests);
    void addMenus();
    void addMnemonics();
    void updateEnabled();

    ProjectStore &m_store;
    UpdaterController &m_updater;
    QList<AppCommand *> m_commands;
    QList<AppMenu> m_menus;
    bool m_isFullScreen = false;
};

} // namespace corvane

Q_DECLARE_METATYPE(corvane::MenuEntry)
Q_DECLARE_METATYPE(corvane::AppMenu)
