#pragma once

#include "platform/FilePanels.h"
#include "session/ProjectStore.h"
#include "shell/AppRequests.h"
#include "shell/ProjectSetup.h"

#include <QUrl>

namespace corvane {

/// What the main window shows: the screen for the state of the session, and over it the alert with
/// the session's last error. It answers the requests for a new and another project. The objects
/// handed in must outlive it. Main thread.
class ContentRouter : public QObject {
    Q_OBJECT
    Q_PROPERTY(Screen screen READ screen NOTIFY screenChanged)
    Q_PROPERTY(bool hasError READ hasError NOTIFY errorChanged)
    Q_PROPERTY(QString errorTitle READ errorTitle CONSTANT)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorChanged)

  public:
    enum class Screen {
        Home,
        Setup,
        Project, ///< while one is open
    };
    Q_ENUM(Screen)

    ContentRouter(ProjectStore &store, AppRequests &requests, FilePanels &panels,
                  ProjectSetup &setup, QObject *parent = nullptr);

    Screen screen() const { return m_screen; }
    bool hasError() const { return m_store.lastError().has_value(); }
    static QString errorTitle() { return QStringLiteral("Project error"); }
    /// Of an error that says nothing about itself, "Unknown error."
    QString errorMessage() const;

    /// "OK" on the alert.
    Q_INVOKABLE void dismissError();
    /// "Back" and "Cancel" on the setup screen: home again, and its fields are forgotten.
    Q_INVOKABLE void leaveSetup();
    /// Whether one project file is what is held over the window, and the opening of it.
    Q_INVOKABLE static bool canOpenDropped(const QList<QUrl> &urls);
    Q_INVOKABLE void openDropped(const QList<QUrl> &urls);
    /// Opens a file that was named to the program. While held, the latest one waits.
    void open(const QString &file);
    /// Holds the open project while something runs that it must not be taken from.
    void setHeld(bool held);

  Q_SIGNALS:
    void screenChanged();
    void errorChanged();

  private:
    void showSetup();
    void runOpenPanel();
    void noteOpenedFile();
    void updateScreen();

    ProjectStore &m_store;
    FilePanels &m_panels;
    ProjectSetup &m_setup;
    bool m_setupWasAskedFor = false;
    bool m_isHeld = false;
    QString m_waitingFile; ///< empty for none
    Screen m_screen = Screen::Home;
};

} // namespace corvane
