#pragma once

#include "SampleShoot.h"
#include "Screenshot.h"

namespace corvane {

/// The application with a project of the sample shoot in its main window. Owned by that window.
/// Stops a run when destroyed.
class ProjectWindow : public QObject {
    Q_OBJECT

  public:
    using Arrange = std::function<bool(ProjectWindow &)>;

    /// A screenshot of the shoot's project, or of another file in the shoot's folder.
    static Screenshot screenshot(const char *name, Arrange arrange, QSize size = {1440, 900},
                                 const char *projectFile = nullptr);
    ~ProjectWindow() override;

    CorvaneApp &app() { return *m_app; }
    ProjectScreen &screen() { return static_cast<ProjectScreen &>(*m_app->projectScreen()); }
    ReviewScreenState &review() { return *screen().review(); }
    FixedPanels &panels() { return m_panels; }
    QQuickWindow &window() { return *m_window; }

    /// Loads a clip into the player and seeks. Returns false on timeout.
    bool show(const char *fileName, double seconds);
    bool seek(double seconds);
    /// Drags the side pane's edge to this width.
    void resizeSidePane(int width);
    /// Waits until all thumbnails, the filmstrip and the player's frame are drawn.
    bool waitUntilDrawn();

  private:
    explicit ProjectWindow(const QString &file);
    bool isFrameDrawn();

    FixedPanels m_panels;
    std::unique_ptr<CorvaneApp> m_app;
    QQuickWindow *m_window = nullptr;
};

} // namespace corvane
