#include "shell/ui/Application.h"

#include "platform/InstanceLock.h"
#include "shell/CorvaneApp.h"
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

int runWindow(const QString &dataFolder, const QString &file,
              const std::function<void(QQuickWindow &)> &shown) {
    InstanceHandover handover(dataFolder);
    CorvaneApp app({.dataFolder = dataFolder});
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
                     [&open, window](const QString &named) {
                         bringToFront(*window);
                         open(named);
                     });
    if (shown) {
        shown(*window);
    }
    window->show();
    open(file);
    return QGuiApplication::exec();
}

} // namespace

int runCorvane(const QString &dataFolder, const QString &file,
               const std::function<void(QQuickWindow &)> &shown) {
    const QDeadlineTimer deadline(kStartPatience);
    for (;;) {
        try {
            const InstanceLock lock(dataFolder);
            return runWindow(dataFolder, file, shown);
        } catch (const AlreadyRunning &running) {
            if (InstanceHandover::handOver(dataFolder, file, kHandoverPatience)) {
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
