#include "ProjectWindow.h"

#include "platform/Tasks.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QQuickItem>

#include <cmath>

namespace corvane {

namespace {

template <typename Visit> void visitVisible(QQuickItem *item, const Visit &visit) {
    if (item->isVisible() && item->opacity() > 0) {
        visit(item);
        for (QQuickItem *const child : item->childItems()) {
            visitVisible(child, visit);
        }
    }
}

void sendMouse(QQuickWindow &window, QEvent::Type type, QPointF at) {
    const bool isDown = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, window.mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
}

} // namespace

ProjectWindow::ProjectWindow(const QString &file)
    : m_app(SampleShoot::shared().makeApp(&m_panels)) {
    waitUntilDone(m_app->store().openProject(file));
}

ProjectWindow::~ProjectWindow() {
    if (screen().isRunning()) {
        screen().cancelRuns();
        waitUntil([this] { return !screen().isRunning(); });
    }
    waitUntilDone(m_app->store().closeProject());
}

Screenshot ProjectWindow::screenshot(const char *name, Arrange arrange, QSize size,
                                     const char *projectFile) {
    const auto create = [projectFile](QQmlEngine &engine) {
        SampleShoot &shoot = SampleShoot::shared();
        std::unique_ptr<ProjectWindow> projectWindow(
            new ProjectWindow(projectFile ? shoot.path(projectFile) : shoot.projectFile()));
        auto window = createWindow(
            engine, "import Corvane.Shell\nMainWindow {}",
            {{QStringLiteral("app"), QVariant::fromValue(projectWindow->m_app.get())}});
        projectWindow->m_window = qobject_cast<QQuickWindow *>(window.get());
        projectWindow.release()->setParent(window.get());
        return window;
    };
    const auto arrangeProject = [arrange = std::move(arrange)](QQuickWindow &window) {
        return arrange(*window.findChild<ProjectWindow *>(QString(), Qt::FindDirectChildrenOnly));
    };
    return {QLatin1String(name), size, create, arrangeProject};
}

bool ProjectWindow::show(const char *fileName, double seconds) {
    review().selection()->selectClip(SampleShoot::clip(app(), fileName));
    return waitUntil([this] { return screen().engine()->isReady(); }) && seek(seconds);
}

bool ProjectWindow::seek(double seconds) {
    screen().engine()->seek(seconds);
    return waitUntil(
        [this, seconds] { return std::abs(screen().engine()->currentSeconds() - seconds) < 0.05; });
}

void ProjectWindow::resizeSidePane(int width) {
    const auto pane = [this] {
        return window().findChild<QQuickItem *>(QStringLiteral("mainPane"));
    };
    waitUntil([&] { return window().isExposed() && pane() && pane()->x() > 0; });
    const QPointF handle = pane()->mapToScene({-0.5, pane()->height() / 2});
    const QPointF target(width + 0.5, handle.y());
    sendMouse(window(), QEvent::MouseButtonPress, handle);
    sendMouse(window(), QEvent::MouseMove, (handle + target) / 2);
    sendMouse(window(), QEvent::MouseMove, target);
    sendMouse(window(), QEvent::MouseButtonRelease, target);
}

bool ProjectWindow::isFrameDrawn() {
    const auto *const player = window().findChild<QQuickItem *>(QStringLiteral("picture"));
    const QImage image = window().grabWindow();
    const QPointF sample = player->mapToScene({player->width() / 2, player->height() / 4});
    return image.pixelColor((sample * image.devicePixelRatio()).toPoint()).value() > 0;
}

bool ProjectWindow::waitUntilDrawn() {
    return waitUntil([this] {
        bool isDrawn = !review().filmstrip()->filmstripGenerating();
        visitVisible(window().contentItem(), [&](QQuickItem *item) {
            if (item->inherits("corvane::JpegImage") &&
                !item->property("path").toString().isEmpty()) {
                isDrawn = isDrawn && item->property("isLoaded").toBool();
            }
        });
        return isDrawn && (!review().selection()->hasSelectedVideo() || isFrameDrawn());
    });
}

} // namespace corvane
