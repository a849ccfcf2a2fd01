#include "shell/CorvaneApp.h"

#include "platform/Tasks.h"

#include <QCoreApplication>
#include <QCoroSignal>

namespace corvane {

CorvaneApp::CorvaneApp(Settings settings)
    : m_clock(*settings.clock),
      m_registry(settings.dataFolder, *settings.clock),
      m_backups(*settings.clock),
      m_authorization(settings.dataFolder, std::move(settings.userDefaults)),
      m_store(m_io, m_registry, m_backups, m_authorization, *settings.clock,
              [this, hashes = settings.hashes](const QList<ProjectSummary> &summaries) {
                  return migrateAuthorizations(m_authorization, m_io, summaries, hashes);
              }),
      m_presence(m_store),
      m_updater(settings.updates, *settings.clock),
      m_panels(settings.panels ? *settings.panels : m_dialogs),
      m_commands(m_store, m_updater, m_requests),
      m_sessionAlert(m_store, m_presence, m_requests, m_panels),
      m_setup(m_store, m_panels),
      m_router(m_store, m_requests, m_panels, m_setup),
      m_recents(m_store, m_registry),
      m_header(m_store, m_presence),
      m_help(settings.guide),
      m_makeProjectScreen(std::move(settings.makeProjectScreen)) {
    connect(&m_sessionAlert, &SessionAlert::quitConfirmed, this, &CorvaneApp::quit);
}

CorvaneApp::~CorvaneApp() = default;

OpenProjectScreen *CorvaneApp::projectScreen() {
    if (!m_projectScreen && m_makeProjectScreen) {
        m_projectScreen = m_makeProjectScreen(*this);
        if (m_projectScreen) {
            connect(m_projectScreen.get(), &OpenProjectScreen::isRunningChanged, &m_router,
                    [this] { m_router.setHeld(m_projectScreen->isRunning()); });
        }
    }
    return m_projectScreen.get();
}

void CorvaneApp::quit() {
    m_isQuitting = true;
    if (m_projectScreen && m_projectScreen->isRunning()) {
        detach(quitAfterRuns());
    } else {
        QCoreApplication::quit();
    }
}

bool CorvaneApp::closeWindow() {
    if (!m_sessionAlert.confirmQuit()) {
        return false;
    }
    quit();
    return true;
}

QCoro::Task<> CorvaneApp::quitAfterRuns() {
    m_projectScreen->cancelRuns();
    while (m_projectScreen->isRunning()) {
        co_await qCoro(m_projectScreen.get(), &OpenProjectScreen::isRunningChanged);
    }
    co_await m_store.flushPendingSave();
    if (m_isQuitting) {
        QCoreApplication::quit();
    }
}

QString CorvaneApp::versionText() {
    return QLatin1Char('v') + UpdateSettings::builtIn().version;
}

} // namespace corvane
