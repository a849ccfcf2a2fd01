#include "shell/AppCommands.h"

#include "platform/Tasks.h"

namespace corvane {

namespace {

template <typename Value> QVariantList toVariants(const QList<Value> &values) {
    QVariantList variants;
    for (const Value &value : values) {
        variants.append(QVariant::fromValue(value));
    }
    return variants;
}

} // namespace

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
    connect(&m_store, &ProjectStore::projectChanged, this, &AppCommands::updateEnabled);
    connect(&m_store, &ProjectStore::saveStateChanged, this, &AppCommands::updateEnabled);
    connect(&m_updater, &UpdaterController::canCheckChanged, this, &AppCommands::updateEnabled);
    updateEnabled();
}

void AppCommands::addProjectCommands(AppRequests &requests) {
    add("saveProject", QStringLiteral("Save Project"), "Ctrl+S",
        [this] { detach(m_store.flushPendingSave()); });
    add("saveCopy", QStringLiteral("Save a Copy…"), "",
        [&requests] { Q_EMIT requests.saveCopyRequested(); });
    add("closeProject", QStringLiteral("Close Project"), "Ctrl+Shift+W",
        [this] { detach(m_store.closeProject()); });
    add("closeWithoutSaving", QStringLiteral("Close Without Saving…"), "",
        [&requests] { Q_EMIT requests.closeWithoutSavingRequested(); });
    add("import", QStringLiteral("Import Footage…"), "Ctrl+I",
        [&requests] { Q_EMIT requests.importRequested(); });
    add("export", QStringLiteral("Export…"), "Ctrl+E",
        [&requests] { Q_EMIT requests.exportRequested(); });
    add("selectsHandoff", QStringLiteral("Selects Handoff…"), "Ctrl+Shift+E",
        [&requests] { Q_EMIT requests.selectsHandoffRequested(); });
}

void AppCommands::add(const char *id, const QString &label, const char *shortcut,
                      std::function<void()> action) {
    m_commands.append(new AppCommand(
        {.id = QLatin1String(id), .label = label, .shortcut = QLatin1String(shortcut)},
        std::move(action), this));
}

void AppCommands::addMenus() {
    const auto entry = [this](const char *id) {
        return MenuEntry{.command = command(QLatin1String(id))};
    };
    const MenuEntry divider;
    m_menus = {{.title = QStringLiteral("File"),
                .entries = {entry("newProject"), entry("openProject"),
                            MenuEntry{.isRecentProjects = true}, entry("saveProject"),
                            entry("saveCopy"), entry("closeProject"), entry("closeWithoutSaving"),
                            divider, entry("import"), entry("export"), entry("selectsHandoff")}},
               {.title = QStringLiteral("Help"),
                .entries = {entry("help"), divider, entry("checkForUpdates")}}};
}

QVariantList AppMenu::entryValues() const {
    return toVariants(entries);
}

QVariantList AppCommands::menuValues() const {
    return toVariants(m_menus);
}

QVariantList AppCommands::all() const {
    return toVariants(m_commands);
}

AppCommand *AppCommands::command(const QString &id) const {
    const auto found = std::ranges::find(m_commands, id, &AppCommand::id);
    return found == m_commands.cend() ? nullptr : *found;
}

void AppCommands::updateEnabled() {
    const bool isOpen = m_store.project().has_value();
    const bool hasSelects = m_store.hasSelects();
    for (const char *const id : {"saveProject", "saveCopy", "closeProject", "import", "export"}) {
        command(QLatin1String(id))->setEnabled(isOpen);
    }
    command(QStringLiteral("closeWithoutSaving"))
        ->setEnabled(isOpen && m_store.saveState().failure.has_value());
    AppCommand *const handoff = command(QStringLiteral("selectsHandoff"));
    handoff->setEnabled(hasSelects);
    handoff->setToolTip(
        hasSelects ? QStringLiteral(
                         "Bundle selects + their media + cache into a portable .corvane package")
                   : QStringLiteral("Mark clips with the S flag in Review first"));
    command(QStringLiteral("checkForUpdates"))->setEnabled(m_updater.canCheck());
}

} // namespace corvane
