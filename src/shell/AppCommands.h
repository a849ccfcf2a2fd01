#pragma once

#include "session/ProjectStore.h"
#include "shell/AppCommand.h"
#include "shell/AppRequests.h"
#include "shell/UpdaterController.h"

namespace corvane {

/// One line of a menu.
struct MenuEntry {
    Q_GADGET
    Q_PROPERTY(corvane::AppCommand *command MEMBER command CONSTANT)
    Q_PROPERTY(bool isDivider READ isDivider CONSTANT)
    Q_PROPERTY(bool isRecentProjects MEMBER isRecentProjects CONSTANT)

  public:
    AppCommand *command = nullptr; ///< null for a divider and for the submenu
    bool isRecentProjects = false; ///< the submenu "Open Recent"

    bool isDivider() const { return !command && !isRecentProjects; }
};

struct AppMenu {
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QVariantList entries READ entryValues CONSTANT)

  public:
    QString title;
    QList<MenuEntry> entries;

    QVariantList entryValues() const;
};

/// Every command of the program, and the menus that they hang in. A command is enabled while what
/// it needs is there: the three that change the session's state run as tasks, which outlive a
/// closed menu. The objects handed in must outlive it. Main thread.
class AppCommands : public QObject {
    Q_OBJECT
    Q_PROPERTY(QVariantList all READ all CONSTANT)
    Q_PROPERTY(QVariantList menus READ menuValues CONSTANT)
    Q_PROPERTY(QString openRecentLabel READ openRecentLabel CONSTANT)
    Q_PROPERTY(QString noRecentProjectsLabel READ noRecentProjectsLabel CONSTANT)

  public:
    AppCommands(ProjectStore &store, UpdaterController &updater, AppRequests &requests,
                QObject *parent = nullptr);

    const QList<AppMenu> &menus() const { return m_menus; }
    QVariantList menuValues() const;
    /// Every command, for the shortcuts.
    QVariantList all() const;
    /// The command with this id, such as "saveProject", or null.
    Q_INVOKABLE corvane::AppCommand *command(const QString &id) const;

    static QString openRecentLabel() { return QStringLiteral("Open Recent"); }
    static QString noRecentProjectsLabel() { return QStringLiteral("No recent projects"); }

  Q_SIGNALS:
    /// The help window is wanted.
    void helpRequested();

  private:
    AppCommand *add(const char *id, const QString &label, const char *shortcut,
                    std::function<void()> action);
    void addProjectCommands(AppRequests &requests);
    void addMenus();
    void refreshEnablement();

    ProjectStore &m_store;
    UpdaterController &m_updater;
    QList<AppCommand *> m_commands;
    QList<AppMenu> m_menus;
};

} // namespace corvane

Q_DECLARE_METATYPE(corvane::MenuEntry)
Q_DECLARE_METATYPE(corvane::AppMenu)
