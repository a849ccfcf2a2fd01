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

/// The index of the first initial of a word in `label`, or else of the first letter, that is not in
/// `taken`, to which it is added. -1 if all are taken.
int takeMnemonic(const QString &label, QString &taken) {
    for (const bool isInitialWanted : {true, false}) {
        for (int i = 0; i < label.size(); ++i) {
            const bool isInitial = i == 0 || label.at(i - 1).isSpace();
            if (label.at(i).isLetter() && (isInitial || !isInitialWanted) &&
                !taken.contains(label.at(i), Qt::CaseInsensitive)) {
                taken += label.at(i);
                return i;
            }
        }
    }
    return -1;
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
    addWindowCommands();
    addMenus();
    addMnemonics();
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

void AppCommands::addWindowCommands() {
    add({.id = QStringLiteral("help"),
         .label = QStringLiteral("Corvane Help"),
         .shortcuts = {QStringLiteral("F1"), QStringLiteral("Ctrl+?")}},
        [this] { Q_EMIT helpRequested(); });
    add({.id = QStringLiteral("fullScreen"),
         .label = QStringLiteral("Full Screen"),
         .shortcuts = {QStringLiteral("F11")},
         .isCheckable = true},
        [this] { setFullScreen(!m_isFullScreen); });
    add({.id = QStringLiteral("quit"),
         .label = QStringLiteral("Quit"),
         .shortcuts = {QStringLiteral("Ctrl+Q")},
         .isApplicationWide = true},
        [this] { Q_EMIT quitRequested(); });
}

void AppCommands::add(AppCommand::Text text, std::function<void()> action) {
    m_commands.append(new AppCommand(std::move(text), std::move(action), this));
}

void AppCommands::add(const char *id, const QString &label, const char *shortcut,
                      std::function<void()> action) {
    add({.id = QLatin1String(id),
         .label = label,
         .shortcuts = *shortcut ? QStringList(QLatin1String(shortcut)) : QStringList()},
        std::move(action));
}

void AppCommands::addMenus() {
    const auto entry = [this](const char *id) {
        return MenuEntry{.command = command(QLatin1String(id))};
    };
    const MenuEntry divider;
    m_menus = {
        {.title = QStringLiteral("File"),
         .entries = {entry("newProject"), entry("openProject"), MenuEntry{.isRecentProjects = true},
                     entry("saveProject"), entry("saveCopy"), entry("closeProject"),
                     entry("closeWithoutSaving"), divider, entry("import"), entry("export"),
                     entry("selectsHandoff"), divider, entry("quit")}},
        {.title = QStringLiteral("View"), .entries = {entry("fullScreen")}},
        {.title = QStringLiteral("Help"),
         .entries = {entry("help"), divider, entry("checkForUpdates")}}};
}

void AppCommands::addMnemonics() {
    QString takenByMenus;
    for (AppMenu &menu : m_menus) {
        menu.mnemonic = takeMnemonic(menu.title, takenByMenus);
        QString taken;
        for (MenuEntry &entry : menu.entries) {
            if (!entry.isDivider()) {
                entry.mnemonic =
                    takeMnemonic(entry.command ? entry.command->label() : openRecentLabel(), taken);
            }
        }
    }
}

void AppCommands::setFullScreen(bool isFullScreen) {
    if (std::exchange(m_isFullScreen, isFullScreen) != isFullScreen) {
        command(QStringLiteral("fullScreen"))->setChecked(isFullScreen);
        Q_EMIT fullScreenChanged();
    }
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
