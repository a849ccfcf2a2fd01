#include "shell/ui/Application.h"

#include "platform/InstanceLock.h"
#include "platform/InterruptWatcher.h"
#include "shell/InstanceHandover.h"

#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
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

int runWindow(const Start &start) {
    // What runs is ended first, by CorvaneApp::quit(): the toolkit would end the program at once.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    InstanceHandover handover(start.dataFolder);
    CorvaneApp app({.dataFolder = start.dataFolder, .makeProjectScreen = [&start](CorvaneApp &app) {
                        return madeOrEnding(start, app);
                    }});
    const InterruptWatcher interrupts([&app] { app.quit(); }); // as the window's closing
    QQmlApplicationEngine engine;
    engine.setInitialProperties({{QStringLiteral("app"), QVariant::fromValue(&app)}});
    engine.loadData("import Corvane.Shell\nMainWindow {}");
    auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window) {
        return fail(QStringLiteral("Corvane's window could not be made."));
    }
    const auto open = [&app](const QString &named) {
        if (!named.isEmpty()) {
            app.router()->open(named);
        }
    };
    QObject::connect(&handover, &InstanceHandover::startedAgain, window,
                     [&app, &open, window](const QString &named) {
                         app.stay();
                         bringToFront(*window);
                         open(named);
                     });
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
