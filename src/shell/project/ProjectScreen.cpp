#include "shell/project/ProjectScreen.h"

#include "media/FFmpegExportSessions.h"
#include "review/ReviewServices.h"
#include "shell/ProjectModule.h"

#include <QGuiApplication>

namespace corvane {

namespace {

/// How many rows the page keys go.
constexpr int kPageOfRows = 10;

QStringList localPaths(const QList<QUrl> &urls) {
    QStringList paths;
    for (const QUrl &url : urls) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    return paths;
}

} // namespace

ProjectScreen::ProjectScreen(CorvaneApp &app, media::MediaPlayer::Options player)
    : m_engine(std::move(player)),
      m_player(m_engine),
      m_review(app.store(), m_player, reviewServices()),
      m_banners(app.store()),
      m_importFlow(&app.store()),
      m_importing(m_importFlow, app.panels(), app.clock()),
      m_exportFlow(&app.store(), media::ffmpegExportSessions()),
      m_exporting(m_exportFlow, app.store(), app.panels(), app.clock()),
      m_handoffFlow(&app.store(), media::ffmpegExportSessions(), m_cacheMaker),
      m_handoff(m_handoffFlow, app.store(), app.panels(), app.clock()) {
    followRequests(*app.requests());
    followFlows();
}

ProjectScreen::~ProjectScreen() = default;

void ProjectScreen::followRequests(AppRequests &requests) {
    connect(&requests, &AppRequests::importRequested, &m_review, &ReviewScreenState::requestImport);
    connect(&requests, &AppRequests::exportRequested, &m_review, &ReviewScreenState::requestExport);
    connect(&requests, &AppRequests::selectsHandoffRequested, &m_review,
            &ReviewScreenState::requestHandoff);
    connect(&m_review, &ReviewScreenState::sheetsChanged, this, &ProjectScreen::showSheet);
}

void ProjectScreen::followFlows() {
    connect(&m_importing, &ImportSheet::isOpenChanged, this, &ProjectScreen::hideSheet);
    connect(&m_importing, &ImportSheet::stageChanged, this, &ProjectScreen::updateRunning);
    for (DeliverySheet *const flow :
         std::initializer_list<DeliverySheet *>{&m_exporting, &m_handoff}) {
        connect(flow, &DeliverySheet::isOpenChanged, this, &ProjectScreen::hideSheet);
        connect(flow, &DeliverySheet::stageChanged, this, &ProjectScreen::updateRunning);
        connect(flow, &DeliverySheet::revealWanted, &m_reveal, &FileReveal::reveal);
    }
}

/// The review says which sheet is up; playing behind it would only be heard.
void ProjectScreen::showSheet() {
    if (m_review.isImporting() || m_review.isExporting() || m_review.isHandingOff()) {
        m_engine.pause();
    }
    if (!m_review.isImporting()) {
        leaveImport();
    } else if (!m_importing.isOpen()) {
        m_importing.open();
    }
    if (m_review.isExporting() && !m_exporting.isOpen()) {
        m_exporting.open();
    } else if (m_review.isHandingOff() && !m_handoff.isOpen()) {
        m_handoff.open();
    }
}

/// Its project has gone, and what was chosen for it. A run, and what it came to, stay up.
void ProjectScreen::leaveImport() {
    if (m_importing.stage() != ImportSheet::Stage::Done) {
        m_importing.dismiss();
    }
}

void ProjectScreen::hideSheet() {
    if (!m_importing.isOpen() && !m_exporting.isOpen() && !m_handoff.isOpen()) {
        m_review.dismissSheet();
    }
}

void ProjectScreen::updateRunning() {
    const bool isRunning = m_importing.stage() == ImportSheet::Stage::Importing ||
                           m_exporting.stage() == DeliverySheet::Stage::Running ||
                           m_handoff.stage() == DeliverySheet::Stage::Running;
    if (std::exchange(m_isRunning, isRunning) == isRunning) {
        return;
    }
    if (isRunning) {
        m_awake.emplace(QStringLiteral("Footage is being copied."));
    } else {
        m_awake.reset();
    }
    Q_EMIT isRunningChanged();
}

void ProjectScreen::cancelRuns() {
    m_importFlow.cancelImport();
    for (int step = 0; step < 2; ++step) { // the second ends what is in hand
        m_exportFlow.requestCancel();
    }
    m_handoffFlow.abort();
}

/// By the name of its type too: the toolkit has several, and none of them may lose a letter to the
/// key map.
bool ProjectScreen::isTextInputFocused() {
    const QObject *const focused = QGuiApplication::focusObject();
    return focused &&
           (focused->inherits("QQuickTextInput") || focused->inherits("QQuickTextEdit") ||
            QByteArrayView(focused->metaObject()->className()).contains("Text"));
}

bool ProjectScreen::handleKey(int key, int modifiers, bool isRepeat) {
    const bool textHasFocus = isTextInputFocused();
    // An arrow key of the main block counts as one of the number pad on some machines.
    const auto held = Qt::KeyboardModifiers(modifiers) & ~Qt::KeypadModifier;
    return m_review.handleKeyDown(key, held, textHasFocus, isRepeat) ||
           (!textHasFocus && moveInList(key, held));
}

bool ProjectScreen::moveInList(int key, Qt::KeyboardModifiers modifiers) {
    if (modifiers & ~Qt::ShiftModifier) {
        return false;
    }
    const int all = m_review.list().rowCount();
    int rows = 0;
    switch (key) {
    case Qt::Key_Up:
        rows = -1;
        break;
    case Qt::Key_Down:
        rows = 1;
        break;
    case Qt::Key_PageUp:
        rows = -kPageOfRows;
        break;
    case Qt::Key_PageDown:
        rows = kPageOfRows;
        break;
    case Qt::Key_Home:
        rows = -all;
        break;
    case Qt::Key_End:
        rows = all;
        break;
    default:
        return false;
    }
    m_review.moveSelection(rows, modifiers);
    return true;
}

bool ProjectScreen::canImportDropped(const QList<QUrl> &urls) const {
    return !m_review.isImporting() && !m_review.isExporting() && !m_review.isHandingOff() &&
           !m_review.hasConfirmation() && !localPaths(urls).isEmpty();
}

void ProjectScreen::importDropped(const QList<QUrl> &urls) {
    if (canImportDropped(urls)) {
        m_review.requestImport();
        m_importing.openWith(localPaths(urls));
    }
}

} // namespace corvane

/// The module's entry.
extern "C" Q_DECL_EXPORT corvane::OpenProjectScreen *
corvaneMakeProjectScreen(corvane::CorvaneApp &app) {
    return new corvane::ProjectScreen(app);
}

static_assert(std::is_same_v<decltype(&corvaneMakeProjectScreen), corvane::projectModule::Entry>);
