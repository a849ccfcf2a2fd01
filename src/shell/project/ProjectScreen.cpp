#include "shell/project/ProjectScreen.h"

#include "media/ExportSession.h"
#include "platform/ApplicationFolders.h"
#include "shell/ProjectModule.h"

#include <QGuiApplication>
#include <QHash>

namespace corvane {

namespace {

/// Rows that the page keys move the selection by.
constexpr int kRowsPerPage = 10;

ReviewScreenState::Services servicesWithSettings() {
    ReviewScreenState::Services services = ReviewScreenState::mediaServices();
    services.settings = applicationFolders::userDefaults();
    return services;
}

} // namespace

ProjectScreen::ProjectScreen(CorvaneApp &app, media::MediaPlayer::Options player)
    : m_engine(std::move(player)),
      m_review(app.store(), m_engine, servicesWithSettings()),
      m_banners(app.store()),
      m_importFlow(&app.store()),
      m_importing(m_importFlow, app.panels(), app.clock()),
      m_exportFlow(&app.store(), media::ffmpegExportSessions()),
      m_exporting(m_exportFlow, app.store(), app.panels(), app.clock()),
      m_handoffFlow(&app.store(), media::ffmpegExportSessions()),
      m_handoff(m_handoffFlow, app.store(), app.panels(), app.clock()) {
    connectRequests(*app.requests());
    connectFlows();
}

ProjectScreen::~ProjectScreen() = default;

void ProjectScreen::connectRequests(AppRequests &requests) {
    connect(&requests, &AppRequests::importRequested, this, &ProjectScreen::requestImport);
    connect(&requests, &AppRequests::exportRequested, this, &ProjectScreen::requestExport);
    connect(&requests, &AppRequests::selectsHandoffRequested, this, &ProjectScreen::requestHandoff);
    connect(&m_review, &ReviewScreenState::importRequested, this, &ProjectScreen::startWithImport);
    connect(&m_review, &ReviewScreenState::projectReplaced, this, &ProjectScreen::leaveImport);
}

void ProjectScreen::connectFlows() {
    connect(&m_importing, &ImportSheet::stageChanged, this, &ProjectScreen::updateRunning);
    for (DeliverySheet *const flow :
         std::initializer_list<DeliverySheet *>{&m_exporting, &m_handoff}) {
        connect(flow, &DeliverySheet::stageChanged, this, &ProjectScreen::updateRunning);
        connect(flow, &DeliverySheet::isOpenChanged, this, &ProjectScreen::openPendingImport);
        connect(flow, &DeliverySheet::revealWanted, &m_reveal, &FileReveal::reveal);
    }
}

/// Opens a sheet, unless one is open.
template <class Sheet> void ProjectScreen::open(Sheet &sheet) {
    if (!isSheetOpen()) {
        m_engine.pause();
        sheet.open();
    }
}

void ProjectScreen::requestImport() {
    open(m_importing);
}

void ProjectScreen::requestExport() {
    if (m_review.hasSelects()) {
        open(m_exporting);
    }
}

void ProjectScreen::requestHandoff() {
    if (m_review.hasSelects()) {
        open(m_handoff);
    }
}

void ProjectScreen::startWithImport() {
    m_isImportPending = !m_importing.isOpen();
    openPendingImport();
}

void ProjectScreen::openPendingImport() {
    if (!isSheetOpen() && std::exchange(m_isImportPending, false)) {
        requestImport();
    }
}

/// Discards the choices made for the former project. The results of a run stay open.
void ProjectScreen::leaveImport() {
    m_isImportPending = false;
    if (m_importing.stage() != ImportViewModel::Stage::done) {
        m_importing.dismiss();
    }
}

void ProjectScreen::updateRunning() {
    const bool isRunning = m_importing.stage() == ImportViewModel::Stage::importing ||
                           m_exporting.stage() == DeliveryFlow::Stage::running ||
                           m_handoff.stage() == DeliveryFlow::Stage::running;
    if (std::exchange(m_isRunning, isRunning) == isRunning) {
        return;
    }
    if (isRunning) {
        m_sleepInhibitor.emplace(QStringLiteral("Footage is being copied."));
    } else {
        m_sleepInhibitor.reset();
    }
    Q_EMIT isRunningChanged();
}

void ProjectScreen::cancelRuns() {
    m_importFlow.cancelImport();
    for (int step = 0; step < 2; ++step) { // the second request also stops the current file
        m_exportFlow.requestCancel();
    }
    m_handoffFlow.abort();
}

/// Also checks the class name for text controls of other types, none of which may lose a letter to
/// the key map.
bool ProjectScreen::isTextInputFocused() {
    const QObject *const focused = QGuiApplication::focusObject();
    return focused &&
           (focused->inherits("QQuickTextInput") || focused->inherits("QQuickTextEdit") ||
            QByteArrayView(focused->metaObject()->className()).contains("Text"));
}

bool ProjectScreen::handleKey(int key, int modifiers, bool isRepeat) {
    const bool textHasFocus = isTextInputFocused();
    // On some machines the arrow keys of the main block have the keypad modifier.
    const auto held = Qt::KeyboardModifiers(modifiers) & ~Qt::KeypadModifier;
    return m_review.handleKeyDown(key, held, textHasFocus, isRepeat) ||
           (!textHasFocus && moveInList(key, held));
}

bool ProjectScreen::moveInList(int key, Qt::KeyboardModifiers modifiers) {
    const int all = m_review.list()->rowCount();
    const QHash<int, int> rowsByKey{{Qt::Key_Up, -1},
                                    {Qt::Key_Down, 1},
                                    {Qt::Key_PageUp, -kRowsPerPage},
                                    {Qt::Key_PageDown, kRowsPerPage},
                                    {Qt::Key_Home, -all},
                                    {Qt::Key_End, all}};
    const auto rows = rowsByKey.constFind(key);
    if (rows == rowsByKey.cend() || modifiers & ~Qt::ShiftModifier) {
        return false;
    }
    m_review.moveSelection(*rows, modifiers);
    return true;
}

bool ProjectScreen::canImportDropped(const QList<QUrl> &urls) const {
    return !isSheetOpen() && !m_review.hasConfirmation() && !localPaths(urls).isEmpty();
}

void ProjectScreen::importDropped(const QList<QUrl> &urls) {
    if (canImportDropped(urls)) {
        requestImport();
        m_importing.openWith(localPaths(urls));
    }
}

} // namespace corvane

/// Entry point of the module.
extern "C" Q_DECL_EXPORT corvane::OpenProjectScreen *
corvaneMakeProjectScreen(corvane::CorvaneApp &app) {
    return new corvane::ProjectScreen(app);
}

static_assert(std::is_same_v<decltype(&corvaneMakeProjectScreen), corvane::projectModule::Entry>);
