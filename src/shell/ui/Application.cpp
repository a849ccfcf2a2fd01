#include "shell/ui/Application.h"

#include "platform/InstanceLock.h"
#include "platform/InterruptWatcher.h"
#include "shell/InstanceHandover.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QThread>

#include <cstdio>

namespace corvane {

namespace {

constexpr std::chrono::seconds kHandoverPatience{10};
/// For how long a start tries again where the data is held and nobody takes the file: at its
/// beginning and at its end the holder has the lock and doesn't listen.
constexpr std::chrono::seconds kStartPatience{2};
constexpr std::chrono::milliseconds kStartPause{20};

int fail(const QString &message) {
    std::fprintf(stderr, "%s\n", message.toUtf8().constData());
    return 1;
}

void bringToFront(QQuickWindow &window) {
    window.show();
    window.raise();
    window.requestActivate();
}

/// An installation that lacks a part can't show a project, and says so as it ends.
std::unique_ptr<OpenProjectScreen> madeOrEnding(const Start &start, CorvaneApp &app) {
    try {
        return start.makeProjectScreen(app);
    } catch (const Failure &failure) {
        QGuiApplication::exit(fail(failure.description()));
        return nullptr;
    }
}

QUrl screen(const char *name) {
    return QUrl(QStringLiteral("qrc:/qt-project.org/imports/Corvane/Shell/%1.qml")
                    .arg(QLatin1String(name)));
}

void waitUntilRead(const QQmlComponent &component) {
    if (component.isLoading()) {
        QEventLoop loop;
        QObject::connect(&component, &QQmlComponent::statusChanged, &loop, &QEventLoop::quit);
        loop.exec();
    }
}

/// The main window with its home screen, not shown yet; null, with a line on the log, where there
/// is none. The engine reads the screens on its thread while this one loads the display's drivers,
/// which come with the first window: one after the other they would take half as long again.
std::unique_ptr<QQuickWindow> madeWindow(QQmlEngine &engine, CorvaneApp &app) {
    QQmlComponent window(&engine);
    QQmlComponent home(&engine);
    window.loadUrl(screen("MainWindow"), QQmlComponent::Asynchronous);
    home.loadUrl(screen("HomeView"), QQmlComponent::Asynchronous);
    {
        const QQuickWindow first;
    }
    waitUntilRead(window);
    std::unique_ptr<QQuickWindow> made(qobject_cast<QQuickWindow *>(
        window.createWithInitialProperties({{QStringLiteral("app"), QVariant::fromValue(&app)}})));
    if (!made) {
        qCritical("%s", qUtf8Printable(window.errorString()));
    }
    return made;
}

int runWindow(const Start &start) {
    // What runs is ended first, by CorvaneApp::quit(): the toolkit would end the program at once.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    InstanceHandover handover(start.dataFolder);
    CorvaneApp app({.dataFolder = start.dataFolder, .makeProjectScreen = [&start](CorvaneApp &app) {
                        return madeOrEnding(start, app);
                    }});
    const auto open = [&app](const QString &named) {
        if (!named.isEmpty()) {
            app.router()->open(named);
        }
    };
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
    // Before the screens are read, when another start can come already.
    QObject::connect(&handover, &InstanceHandover::startedAgain, &app,
                     [&app, &open, &window](const QString &named) {
                         app.stay();
                         if (window) {
                             bringToFront(*window);
                         }
                         open(named);
                     });
    window = madeWindow(engine, app);
    if (!window) {
        return fail(QStringLiteral("Corvane's window could not be made."));
    }
    const InterruptWatcher interrupts([&app] { app.quit(); }); // as the window's closing
    if (start.shown) {
        start.shown(*window);
    }
    window->show();
    open(start.file);
    return QGuiApplication::exec();
}

} // namespace

int runCorvane(const Start &start) {
    const QDeadlineTimer deadline(kStartPatience);
    for (;;) {
        try {
            const InstanceLock lock(start.dataFolder);
            return runWindow(start);
        } catch (const AlreadyRunning &running) {
            if (InstanceHandover::handOver(start.dataFolder, start.file, kHandoverPatience)) {
                return 0;
            }
            if (deadline.hasExpired()) {
                return fail(running.description());
            }
        } catch (const Failure &failure) {
            return fail(failure.description());
        }
        QThread::msleep(kStartPause.count());
    }
}

} // namespace corvane
