#include "shell/AppCommands.h"

#include "platform/Tasks.h"

namespace corvane {

AppCommands::AppCommands(ProjectStore &store, UpdaterController &updater, AppRequests &requests,
                         QObject *parent)
    : QObject(parent), m_store(store), m_updater(updater) {
    add("checkForUpdates", QStringLiteral("Check for Updates…"), "", [this] { m_updater.check(); });
    add("newProject", QStringLiteral("New Project"), "Ctrl+N",
        [&requests] { Q_EMIT requests.newProjectRequested(); });
    add("openProject", QStringLiteral("Open Project…"), "Ctrl+O",
        [&requests] { Q_EMIT requests.openProjectRequested(); });
    addProjectCommands(requests);
    add("help", QStringLiteral("Corvane Help"), "Ctrl+?", [this] { Q_EMIT helpRequested(); });
    addMenus();
    connect(&m_store, &ProjectStore::projectChanged, this, &AppCommands::refreshEnablement);
    connect(&m_updater, &UpdaterController::canCheckChanged, this, &AppCommands::refreshEnablement);
    refreshEnablement();
}

void AppCommands::addProjectCommands(AppRequests &requests) {
    add("saveProject", QStringLiteral("Save Project"), "Ctrl+S",
        [this] { detach(m_store.flushPendingSave()); });
    add("closeProject", QStringLiteral("Close Project"), "Ctrl+Shift+W",
        [this] { detach(m_store.closeProject()); });
    add("import", QStringLiteral("Import Footage…"), "Ctrl+I",
        [&requests] { Q_EMIT requests.importRequested(); });
    add("export", QStringLiteral("Export…"), "Ctrl+E",
        [&requests] { Q_EMIT requests.exportRequested(); });
    add("selectsHandoff", QStringLiteral("Selects Handoff…"), "Ctrl+Shift+E",
        [&requests] { Q_EMIT requests.selectsHandoffRequested(); });
}

AppCommand *AppCommands::add(const char *id, const QString &label, const char *shortcut,
                             std::function<void()> action) {
    auto *const added = new AppCommand(
        {.id = QLatin1String(id), .label = label, .shortcut = QLatin1String(shortcut)},
        std::move(action), this);
    m_commands.append(added);
    return added;
}

void AppCommands::addMenus() {
    const auto entry = [this](const char *id) {
        return MenuEntry{.command = command(QLatin1String(id))};
    };
    const MenuEntry divider;
    m_menus = {
        {.title = QStringLiteral("File"),
         .entries = {entry("newProject"), entry("openProject"), MenuEntry{.isRecentProjects = true},
                     entry("saveProject"), entry("closeProject"), divider, entry("import"),
                     entry("export"), entry("selectsHandoff")}},
        {.title = QStringLiteral("Help"),
         .entries = {entry("help"), divider, entry("checkForUpdates")}}};
}

QVariantList AppMenu::entryValues() const {
    QVariantList values;
    for (const MenuEntry &entry : entries) {
        values.append(QVariant::fromValue(entry));
    }
    return values;
}

QVariantList AppCommands::menuValues() const {
    QVariantList values;
    for (const AppMenu &menu : m_menus) {
        values.append(QVariant::fromValue(menu));
    }
    return values;
}

QVariantList AppCommands::all() const {
    QVariantList values;
    for (AppCommand *const each : m_commands) {
        values.append(QVariant::fromValue(each));
    }
    return values;
}

AppCommand *AppCommands::command(const QString &id) const {
    for (AppCommand *const each : m_commands) {
        if (each->id() == id) {
            return each;
        }
    }
    return nullptr;
}

void AppCommands::refreshEnablement() {
    const bool isOpen = m_store.project().has_value();
    const bool hasSelects = isOpen && m_store.project()->hasSelects();
    for (const char *const id : {"saveProject", "closeProject", "import", "export"}) {
        command(QLatin1String(id))->setEnabled(isOpen);
    }
    AppCommand *const handoff = command(QStringLiteral("selectsHandoff"));
    handoff->setEnabled(hasSelects);
    handoff->setToolTip(
        hasSelects ? QStringLiteral(
                         "Bundle selects + their media + cache into a portable .corvane package")
                   : QStringLiteral("Mark clips with the S flag in Review first"));
    command(QStringLiteral("checkForUpdates"))->setEnabled(m_updater.canCheck());
}

} // namespace corvane
