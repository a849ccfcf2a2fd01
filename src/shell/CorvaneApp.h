#pragma once

#include "shell/AppCommands.h"
#include "shell/ContentRouter.h"
#include "shell/DialogFilePanels.h"
#include "shell/FileReveal.h"
#include "shell/HelpDocument.h"
#include "shell/OpenProjectScreen.h"
#include "shell/ProjectHeader.h"
#include "shell/RecentProjectsModel.h"
#include "trust/AuthorizationMigrations.h"

#include <QSettings>

#include <functional>

namespace corvane {

/// The program but for its windows: the session and all that the screens are bound to, made in this
/// order at start and kept for the life of the process. Needs no screen. Main thread.
class CorvaneApp : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString productName READ productName CONSTANT)
    Q_PROPERTY(QString versionText READ versionText CONSTANT)
    Q_PROPERTY(corvane::AppCommands *commands READ commands CONSTANT)
    Q_PROPERTY(corvane::ContentRouter *router READ router CONSTANT)
    Q_PROPERTY(corvane::ProjectSetup *setup READ setup CONSTANT)
    Q_PROPERTY(corvane::RecentProjectsModel *recents READ recents CONSTANT)
    Q_PROPERTY(corvane::ProjectHeader *header READ header CONSTANT)
    Q_PROPERTY(corvane::HelpDocument *help READ help CONSTANT)
    Q_PROPERTY(corvane::UpdaterController *updater READ updater CONSTANT)
    Q_PROPERTY(corvane::DialogFilePanels *dialogs READ dialogs CONSTANT)
    Q_PROPERTY(corvane::OpenProjectScreen *projectScreen READ projectScreen CONSTANT)

  public:
    using MakeProjectScreen = std::function<std::unique_ptr<OpenProjectScreen>(CorvaneApp &)>;

    /// What the program is started with.
    struct Settings {
        QString dataFolder; ///< whose lock the process holds
        UpdateSettings updates = UpdateSettings::builtIn();
        QString guide = QStringLiteral(":/corvane/UserGuide.md");
        FilePanels *panels =
            nullptr; ///< in the place of the screen's dialogs; must outlive the app
        Clock *clock = &Clock::system();
        std::unique_ptr<QSettings> userDefaults = {}; ///< in the place of the user's own
        ContentHashMigration hashes = ContentHashMigration::InBackground;
        /// Makes what the screen of an open project is bound to, once the first is open.
        MakeProjectScreen makeProjectScreen = {};
    };

    explicit CorvaneApp(Settings settings);
    ~CorvaneApp() override;

    static QString productName() { return QStringLiteral("Corvane"); }
    /// As "v1.0.0".
    static QString versionText();

    ProjectStore &store() { return m_store; }
    AppRequests *requests() { return &m_requests; }
    AppCommands *commands() { return &m_commands; }
    ContentRouter *router() { return &m_router; }
    ProjectSetup *setup() { return &m_setup; }
    RecentProjectsModel *recents() { return &m_recents; }
    ProjectHeader *header() { return &m_header; }
    HelpDocument *help() { return &m_help; }
    UpdaterController *updater() { return &m_updater; }
    DialogFilePanels *dialogs() { return &m_dialogs; }
    /// The panels that everything asks its user with.
    FilePanels &panels() { return m_panels; }
    Clock &clock() { return m_clock; }
    /// Null where the application was given no way to make it.
    OpenProjectScreen *projectScreen();
    /// Ends the program with its event loop. What runs is ended first, and what it has brought into
    /// the project is saved; otherwise nothing is, and nothing is asked.
    Q_INVOKABLE void quit();
    /// Takes a `quit` back that still waits for what runs: the program was asked for again.
    void stay() { m_isQuitting = false; }

  private:
    QCoro::Task<> quitAfterRuns();

    Clock &m_clock;
    ProjectFileIO m_io;
    ProjectRegistry m_registry;
    BackupService m_backups;
    MediaSourceAuthorization m_authorization;
    ProjectStore m_store;
    UpdaterController m_updater;
    DialogFilePanels m_dialogs;
    FilePanels &m_panels;
    AppRequests m_requests;
    AppCommands m_commands;
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
