#include "shell/ui/Application.h"

#include "platform/ApplicationEnd.h"
#include "platform/InstanceLock.h"
#include "platform/InterruptWatcher.h"
#include "shell/InstanceHandover.h"

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QScopeGuard>
#include <QThread>

#include <cstdio>

namespace corvane {

namespace {

constexpr std::chrono::seconds kHandoverTimeout{10};
/// How long to retry while the data folder is locked but no instance accepts the file: an instance
/// that is starting or quitting holds the lock without listening.
constexpr std::chrono::seconds kLockTimeout{2};
constexpr std::chrono::milliseconds kLockRetryInterval{20};

/// Prints `message` and returns the exit status of a failure.
int fail(const QString &message) {
    std::fprintf(stderr, "%s\n", message.toUtf8().constData());
    return 1;
}

void bringToFront(QQuickWindow &window) {
    window.show();
    window.raise();
    window.requestActivate();
}

/// Returns nullptr and quits with an error if the project screen's module can't be loaded.
std::unique_ptr<OpenProjectScreen> makeProjectScreenOrQuit(const StartOptions &options,
                                                           CorvaneApp &app) {
    try {
        return options.makeProjectScreen(app);
    } catch (const Failure &failure) {
        QGuiApplication::exit(fail(failure.description()));
        return nullptr;
    }
}

QUrl screenUrl(const char *name) {
    return QUrl(QStringLiteral("qrc:/qt-project.org/imports/Corvane/Shell/%1.qml")
                    .arg(QLatin1String(name)));
}

void waitUntilLoaded(const QQmlComponent &component) {
    if (component.isLoading()) {
        QEventLoop loop;
        QObject::connect(&component, &QQmlComponent::statusChanged, &loop, &QEventLoop::quit);
        loop.exec();
    }
}

/// Creates the hidden main window with the home screen. Logs errors and returns nullptr if the QML
/// can't be loaded. The engine compiles the QML on its own thread while the first, empty window
/// loads the graphics drivers on this one; doing both in sequence takes half as long again.
std::unique_ptr<QQuickWindow> createMainWindow(QQmlEngine &engine, CorvaneApp &app) {
    QQmlComponent window(&engine);
    QQmlComponent home(&engine);
    window.loadUrl(screenUrl("MainWindow"), QQmlComponent::Asynchronous);
    home.loadUrl(screenUrl("HomeView"), QQmlComponent::Asynchronous);
    {
        const QQuickWindow first;
    }
    waitUntilLoaded(window);
    std::unique_ptr<QQuickWindow> mainWindow(qobject_cast<QQuickWindow *>(
        window.createWithInitialProperties({{QStringLiteral("app"), QVariant::fromValue(&app)}})));
    if (!mainWindow) {
        qCritical("%s", qUtf8Printable(window.errorString()));
    }
    return mainWindow;
}

int runWindow(const StartOptions &options) {
    // CorvaneApp::quit() stops running work before it quits.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    InstanceHandover handover(options.dataFolder);
    // Requested while the objects below are destroyed: none of them waits for a file to be read.
    const auto allowWork = qScopeGuard([] { applicationEnd::reset(); });
    CorvaneApp app(
        {.dataFolder = options.dataFolder, .makeProjectScreen = [&options](CorvaneApp &app) {
             return makeProjectScreenOrQuit(options, app);
         }});
    const auto open = [&app](const QString &file) {
        if (!file.isEmpty()) {
            app.router()->open(file);
        }
    };
    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
    // Connected before loading QML, during which another instance may already hand over its file.
    QObject::connect(&handover, &InstanceHandover::startedAgain, &app,
                     [&app, &open, &window](const QString &file) {
                         app.cancelQuit();
                         if (window) {
                             bringToFront(*window);
                         }
                         open(file);
                     });
    window = createMainWindow(engine, app);
    if (!window) {
        return fail(QStringLiteral("Corvane's window could not be made."));
    }
    const InterruptWatcher interrupts([&app] { app.quit(); });
    if (options.onWindowCreated) {
        options.onWindowCreated(*window);
    }
    window->show();
    open(options.file);
    const int status = QGuiApplication::exec();
    applicationEnd::request();
    return status;
}

} // namespace

int runCorvane(const StartOptions &options) {
    const QDeadlineTimer deadline(kLockTimeout);
    for (;;) {
        try {
            const InstanceLock lock(options.dataFolder);
            return runWindow(options);
        } catch (const AlreadyRunning &running) {
            if (InstanceHandover::handOver(options.dataFolder, options.file, kHandoverTimeout)) {
                return 0;
            }
            if (deadline.hasExpired()) {
                return fail(running.description());
            }
        } catch (const Failure &failure) {
            return fail(failure.description());
        }
        QThread::msleep(kLockRetryInterval.count());
    }
}

} // namespace corvane
