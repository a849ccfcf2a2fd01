#pragma once

#include "shell/AppCommands.h"
#include "shell/ContentRouter.h"
#include "shell/DialogFilePanels.h"
#include "shell/FileReveal.h"
#include "shell/HelpDocument.h"
#include "shell/OpenProjectScreen.h"
#include "shell/ProjectHeader.h"
#include "shell/RecentProjectsModel.h"
#include "shell/SessionAlert.h"
#include "trust/AuthorizationMigrations.h"

#include <QSettings>

#include <functional>

namespace corvane {

/// The application without its windows: the session and all objects that screens bind to. Lives as
/// long as the process and needs no display. Main thread only.
class CorvaneApp : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString productName READ productName CONSTANT)
    Q_PROPERTY(QString versionText READ versionText CONSTANT)
    Q_PROPERTY(corvane::AppCommands *commands READ commands CONSTANT)
    Q_PROPERTY(corvane::ContentRouter *router READ router CONSTANT)
    Q_PROPERTY(corvane::SessionAlert *sessionAlert READ sessionAlert CONSTANT)
    Q_PROPERTY(corvane::ProjectSetup *setup READ setup CONSTANT)
    Q_PROPERTY(corvane::RecentProjectsModel *recents READ recents CONSTANT)
    Q_PROPERTY(corvane::ProjectHeader *header READ header CONSTANT)
    Q_PROPERTY(corvane::HelpDocument *help READ help CONSTANT)
    Q_PROPERTY(corvane::UpdaterController *updater READ updater CONSTANT)
    Q_PROPERTY(corvane::DialogFilePanels *dialogs READ dialogs CONSTANT)
    Q_PROPERTY(corvane::OpenProjectScreen *projectScreen READ projectScreen CONSTANT)

  public:
    using MakeProjectScreen = std::function<std::unique_ptr<OpenProjectScreen>(CorvaneApp &)>;

    struct Settings {
        QString dataFolder; ///< the process must hold its `InstanceLock`
        UpdateSettings updates = UpdateSettings::builtIn();
        QString guide = QStringLiteral(":/corvane/UserGuide.md");
        FilePanels *panels = nullptr; ///< replaces the file dialogs; must outlive the app
        Clock *clock = &Clock::system();
        std::unique_ptr<QSettings> userDefaults = {}; ///< replaces the user's settings
        ContentHashMigration hashes = ContentHashMigration::InBackground;
        /// Creates the screen of open projects. Called when the first project is opened.
        MakeProjectScreen makeProjectScreen = {};
    };

    explicit CorvaneApp(Settings settings);
    ~CorvaneApp() override;

    static QString productName() { return QStringLiteral("Corvane"); }
    /// Such as "v1.0.0".
    static QString versionText();

    ProjectStore &store() { return m_store; }
    AppRequests *requests() { return &m_requests; }
    AppCommands *commands() { return &m_commands; }
    ContentRouter *router() { return &m_router; }
    SessionAlert *sessionAlert() { return &m_sessionAlert; }
    ProjectSetup *setup() { return &m_setup; }
    RecentProjectsModel *recents() { return &m_recents; }
    ProjectHeader *header() { return &m_header; }
    HelpDocument *help() { return &m_help; }
    UpdaterController *updater() { return &m_updater; }
    DialogFilePanels *dialogs() { return &m_dialogs; }
    /// The file panels of all flows.
    FilePanels &panels() { return m_panels; }
    Clock &clock() { return m_clock; }
    /// nullptr if `Settings::makeProjectScreen` is empty.
    OpenProjectScreen *projectScreen();
    /// Quits the event loop. If a run is in progress, ends it first and saves its results;
    /// otherwise quits without saving or asking.
    void quit();
    /// Quits for the window's close button. Asks first if a save has failed, and returns false.
    Q_INVOKABLE bool closeWindow();
    /// Cancels a `quit` that still waits for a run, because the program was started again.
    void cancelQuit() { m_isQuitting = false; }

  private:
    QCoro::Task<> quitAfterRuns();

    Clock &m_clock;
    ProjectFileIO m_io;
    ProjectRegistry m_registry;
    BackupService m_backups;
    MediaSourceAuthorization m_authorization;
    ProjectStore m_store;
    ProjectPresence m_presence;
    UpdaterController m_updater;
    DialogFilePanels m_dialogs;
    FilePanels &m_panels;
    AppRequests m_requests;
    AppCommands m_commands;
    SessionAlert m_sessionAlert;
    ProjectSetup m_setup;
    ContentRouter m_router;
    RecentProjectsModel m_recents;
    ProjectHeader m_header;
    HelpDocument m_help;
    MakeProjectScreen m_makeProjectScreen;
    std::unique_ptr<OpenProjectScreen> m_projectScreen;
    bool m_isQuitting = false;
};

} // namespace corvane
