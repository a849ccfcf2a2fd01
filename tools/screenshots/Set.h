#pragma once

#include "ScreenPicture.h"
#include "Shoot.h"

namespace corvane {

/// The window of the program with the shoot's project open in it, as it stands on one picture. It
/// hangs below that window. What still runs is ended with it.
class Set : public QObject {
    Q_OBJECT

  public:
    using Arrange = std::function<bool(Set &)>;

    /// A picture of the shoot's project. `other`: a project file in its place.
    static ScreenPicture picture(const char *name, Arrange arrange, QSize size = {1440, 900},
                                 const char *other = nullptr);
    ~Set() override;

    CorvaneApp &app() { return *m_app; }
    ProjectScreen &screen() { return static_cast<ProjectScreen &>(*m_app->projectScreen()); }
    ReviewScreenState &review() { return *screen().review(); }
    FixedPanels &panels() { return m_panels; }
    QQuickWindow &window() { return *m_window; }

    /// Puts the clip into the player at that time, and the player to rest there.
    bool show(const char *fileName, double seconds);
    bool seek(double seconds);
    /// Drags the side pane to that width.
    void widenSidePane(int width);
    /// Until every picture of the lists and of the filmstrip, and the player's, is drawn.
    bool isDrawn();

  private:
    explicit Set(const QString &file);
    bool showsPlayersPicture();

    FixedPanels m_panels;
    std::unique_ptr<CorvaneApp> m_app;
    QQuickWindow *m_window = nullptr;
};

} // namespace corvane
