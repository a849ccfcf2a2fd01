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

  public:
    AppCommand *command = nullptr; ///< nullptr for a divider and for the submenu
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

/// All commands of the program and the menus that contain them. Commands follow the state of the
/// session: they are enabled while they can run. The constructor's arguments must outlive this
/// object. Main thread only.
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
    QVariantList all() const;
    /// The command with this id, such as "saveProject", or nullptr.
    Q_INVOKABLE corvane::AppCommand *command(const QString &id) const;

    static QString openRecentLabel() { return QStringLiteral("Open Recent"); }
    static QString noRecentProjectsLabel() { return QStringLiteral("No recent projects"); }

  Q_SIGNALS:
    void helpRequested();

  private:
    void add(const char *id, const QString &label, const char *shortcut,
             std::function<void()> action);
    void addProjectCommands(AppRequests &requests);
    void addMenus();
    void updateEnabled();

    ProjectStore &m_store;
    UpdaterController &m_updater;
    QList<AppCommand *> m_commands;
    QList<AppMenu> m_menus;
};

} // namespace corvane

Q_DECLARE_METATYPE(corvane::MenuEntry)
Q_DECLARE_METATYPE(corvane::AppMenu)
