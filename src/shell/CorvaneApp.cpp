#include "shell/CorvaneApp.h"

namespace corvane {

namespace {

FilePanels &panelsOf(const CorvaneApp::Settings &settings, DialogFilePanels &dialogs) {
    return settings.panels ? *settings.panels : dialogs;
}

} // namespace

CorvaneApp::CorvaneApp(Settings settings)
    : m_registry(settings.dataFolder, *settings.clock),
      m_backups(*settings.clock),
      m_authorization(settings.dataFolder, std::move(settings.userDefaults)),
      m_store(m_io, m_registry, m_backups, m_authorization, *settings.clock,
              [this, hashes = settings.hashes](const QList<ProjectSummary> &summaries) {
                  return migrateAuthorizations(m_authorization, m_io, summaries, hashes);
              }),
      m_updater(settings.updates, *settings.clock),
      m_commands(m_store, m_updater, m_requests),
      m_setup(m_store, panelsOf(settings, m_dialogs)),
      m_router(m_store, m_requests, panelsOf(settings, m_dialogs), m_setup),
      m_recents(m_store, m_registry),
      m_header(m_store),
      m_help(settings.guide) {}

CorvaneApp::~CorvaneApp() = default;

QString CorvaneApp::versionText() {
    return QLatin1Char('v') + UpdateSettings::builtIn().version;
}

} // namespace corvane
