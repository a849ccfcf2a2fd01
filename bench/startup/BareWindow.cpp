// Baseline of the start-up time: Qt Quick, its engine and an empty window until the first frame.
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <cstdio>

int main(int argc, char **argv) {
    QGuiApplication application(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\nWindow { width: 1440; height: 900; visible: true }");
    auto *const window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window) {
        return 1;
    }
    QObject::connect(
        window, &QQuickWindow::frameSwapped, &application,
        [] {
            std::puts("frame");
            std::fflush(stdout);
            QCoreApplication::quit();
        },
        Qt::QueuedConnection);
    return QGuiApplication::exec();
}
