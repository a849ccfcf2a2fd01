#include "Set.h"

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

Set::Set(const QString &file) : m_app(Shoot::shared().makeApp(&m_panels)) {
    waitUntilDone(m_app->store().openProject(file));
}

Set::~Set() {
    if (screen().isRunning()) {
        screen().endRuns();
        waitUntil([this] { return !screen().isRunning(); });
    }
    waitUntilDone(m_app->store().closeProject());
}

ScreenPicture Set::picture(const char *name, Arrange arrange, QSize size, const char *other) {
    const auto make = [other](QQmlEngine &engine) {
        Shoot &shoot = Shoot::shared();
        std::unique_ptr<Set> set(new Set(other ? shoot.path(other) : shoot.projectFile()));
        auto window = windowOf(engine, "import Corvane.Shell\nMainWindow {}",
                               {{QStringLiteral("app"), QVariant::fromValue(set->m_app.get())}});
        set->m_window = qobject_cast<QQuickWindow *>(window.get());
        set.release()->setParent(window.get());
        return window;
    };
    const auto arrangeSet = [arrange = std::move(arrange)](QQuickWindow &window) {
        return arrange(*window.findChild<Set *>(QString(), Qt::FindDirectChildrenOnly));
    };
    return {QLatin1String(name), size, make, arrangeSet};
}

bool Set::show(const char *fileName, double seconds) {
    review().selectClip(Shoot::clip(app(), fileName));
    return waitUntil([this] { return screen().engine()->isReady(); }) && seek(seconds);
}

bool Set::seek(double seconds) {
    screen().engine()->seek(seconds);
    return waitUntil(
        [this, seconds] { return std::abs(screen().engine()->currentSeconds() - seconds) < 0.05; });
}

void Set::widenSidePane(int width) {
    const auto pane = [this] {
        return window().findChild<QQuickItem *>(QStringLiteral("mainPane"));
    };
    waitUntil([&] { return window().isExposed() && pane() && pane()->x() > 0; });
    const QPointF handle = pane()->mapToScene({-0.5, pane()->height() / 2});
    const QPointF there(width + 0.5, handle.y());
    sendMouse(window(), QEvent::MouseButtonPress, handle);
    sendMouse(window(), QEvent::MouseMove, (handle + there) / 2);
    sendMouse(window(), QEvent::MouseMove, there);
    sendMouse(window(), QEvent::MouseButtonRelease, there);
}

bool Set::showsPlayersPicture() {
    const auto *const player = window().findChild<QQuickItem *>(QStringLiteral("picture"));
    const QImage image = window().grabWindow();
    const QPointF middle = player->mapToScene({player->width() / 2, player->height() / 4});
    return image.pixelColor((middle * image.devicePixelRatio()).toPoint()).value() > 0;
}

bool Set::isDrawn() {
    return waitUntil([this] {
        bool isWhole = !review().filmstrip().filmstripGenerating();
        visitVisible(window().contentItem(), [&](QQuickItem *item) {
            if (item->inherits("corvane::StillImage") &&
                !item->property("path").toString().isEmpty()) {
                isWhole = isWhole && item->property("isLoaded").toBool();
            }
        });
        return isWhole && (!review().hasSelectedVideo() || showsPlayersPicture());
    });
}

} // namespace corvane
