#pragma once

#include "platform/FilePanels.h"
#include "session/ProjectStore.h"
#include "shell/AppRequests.h"
#include "shell/ProjectSetup.h"

#include <QUrl>

namespace corvane {

/// Chooses the screen and the title of the main window by the state of the session, and shows the
/// session's last error as an alert, except the failure of a save (see `SessionAlert`). Handles the
/// requests for a new and for another project. The constructor's arguments must outlive this
/// object. Main thread only.
class ContentRouter : public QObject {
    Q_OBJECT
    Q_PROPERTY(Screen screen READ screen NOTIFY screenChanged)
    Q_PROPERTY(QString windowTitle READ windowTitle NOTIFY windowTitleChanged)
    Q_PROPERTY(bool hasError READ hasError NOTIFY errorChanged)
    Q_PROPERTY(QString errorTitle READ errorTitle CONSTANT)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorChanged)

  public:
    enum class Screen {
        Home,
        Setup,
        Project,
    };
    Q_ENUM(Screen)

    ContentRouter(ProjectStore &store, AppRequests &requests, FilePanels &panels,
                  ProjectSetup &setup, QObject *parent = nullptr);

    Screen screen() const { return m_screen; }
    /// "Harbor — Corvane", or "Corvane" without an open project.
    const QString &windowTitle() const { return m_windowTitle; }
    bool hasError() const { return m_store.lastError() && !m_store.lastError()->isSaveFailure(); }
    static QString errorTitle() { return QStringLiteral("Project error"); }
    /// The error's description, or "Unknown error." if that is empty.
    QString errorMessage() const;

    /// Clears the last error.
    Q_INVOKABLE void dismissError();
    /// Returns to the home screen and resets the setup fields.
    Q_INVOKABLE void leaveSetup();
    /// True if the dragged items are exactly one project file.
    Q_INVOKABLE static bool canOpenDropped(const QList<QUrl> &urls);
    Q_INVOKABLE void openDropped(const QList<QUrl> &urls);
    /// Opens a project file. While held, keeps the latest file and opens it when the hold ends.
    void open(const QString &file);
    /// Keeps the current project open while a run is in progress. A request for another or a new
    /// project waits until the hold ends; the latest one counts.
    void setHeld(bool held);

  Q_SIGNALS:
    void screenChanged();
    void windowTitleChanged();
    void errorChanged();

  private:
    void requestSetup();
    QCoro::Task<> showSetup();
    void runOpenPanel();
    void resetSetupAfterOpening();
    void updateScreen();
    void updateWindowTitle();

    ProjectStore &m_store;
    FilePanels &m_panels;
    ProjectSetup &m_setup;
    bool m_isSetupRequested = false;
    bool m_isHeld = false;
    std::function<void()> m_pendingRequest; ///< for the end of the hold; may be empty
    Screen m_screen = Screen::Home;
    QString m_windowTitle;
};

} // namespace corvane
