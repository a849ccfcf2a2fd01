#include "shell/ContentRouter.h"

#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "platform/TextFormat.h"

#include <QPointer>

namespace corvane {

ContentRouter::ContentRouter(ProjectStore &store, AppRequests &requests, FilePanels &panels,
                             ProjectSetup &setup, QObject *parent)
    : QObject(parent), m_store(store), m_panels(panels), m_setup(setup) {
    connect(&requests, &AppRequests::newProjectRequested, this, &ContentRouter::requestSetup);
    connect(&requests, &AppRequests::openProjectRequested, this, &ContentRouter::runOpenPanel);
    connect(&m_store, &ProjectStore::fileURLChanged, this, &ContentRouter::resetSetupAfterOpening);
    connect(&m_store, &ProjectStore::projectChanged, this, &ContentRouter::updateScreen);
    connect(&m_store, &ProjectStore::lastErrorChanged, this, &ContentRouter::errorChanged);
    connect(&m_store, &ProjectStore::projectChanged, this, &ContentRouter::updateWindowTitle);
    updateScreen();
    updateWindowTitle();
}

QString ContentRouter::errorMessage() const {
    const QString message = hasError() ? m_store.lastError()->description() : QString();
    return message.isEmpty() ? QStringLiteral("Unknown error.") : message;
}

void ContentRouter::dismissError() {
    m_store.clearLastError();
}

void ContentRouter::leaveSetup() {
    m_isSetupRequested = false;
    m_setup.reset();
    updateScreen();
}

void ContentRouter::requestSetup() {
    if (m_isHeld) {
        m_pendingRequest = [this] { requestSetup(); };
    } else {
        detach(showSetup());
    }
}

/// Closes the open project first. If it can't be saved, it stays open.
QCoro::Task<> ContentRouter::showSetup() {
    const QPointer self(this);
    m_isSetupRequested = true;
    if (m_store.project()) {
        co_await m_store.closeProject();
    }
    if (self) {
        m_isSetupRequested = !m_store.project();
        updateScreen();
    }
}

void ContentRouter::runOpenPanel() {
    m_panels.openProjectFile([self = QPointer(this)](const QString &file) {
        if (self) {
            self->open(file);
        }
    });
}

bool ContentRouter::canOpenDropped(const QList<QUrl> &urls) {
    return urls.size() == 1 && urls.first().isLocalFile() &&
           paths::extension(urls.first().toLocalFile()).toLower() == QStringLiteral("corvane");
}

void ContentRouter::openDropped(const QList<QUrl> &urls) {
    if (canOpenDropped(urls)) {
        open(urls.first().toLocalFile());
    }
}

void ContentRouter::open(const QString &file) {
    if (m_isHeld) {
        m_pendingRequest = [this, file] { open(file); };
    } else {
        detach(m_store.openProject(file));
    }
}

void ContentRouter::setHeld(bool held) {
    m_isHeld = held;
    if (const auto request = held ? nullptr : std::exchange(m_pendingRequest, nullptr)) {
        request();
    }
}

void ContentRouter::resetSetupAfterOpening() {
    if (m_store.fileURL()) {
        leaveSetup();
    }
}

void ContentRouter::updateWindowTitle() {
    const QString product = QStringLiteral("Corvane");
    const QString name =
        m_store.project() ? inOneLine(m_store.project()->displayName()) : QString();
    const QString title = name.isEmpty() ? product : QStringLiteral("%1 — %2").arg(name, product);
    if (std::exchange(m_windowTitle, title) != title) {
        Q_EMIT windowTitleChanged();
    }
}

void ContentRouter::updateScreen() {
    const Screen screen = m_store.project()    ? Screen::Project
                          : m_isSetupRequested ? Screen::Setup
                                               : Screen::Home;
    if (std::exchange(m_screen, screen) != screen) {
        Q_EMIT screenChanged();
    }
}

} // namespace corvane
