// The program's own start up to its first frame, on the user's data folder as the environment names
// it.
#include "kit/Look.h"
#include "platform/ApplicationFolders.h"
#include "platform/ProcessLocale.h"
#include "shell/ui/Application.h"

#include <QGuiApplication>
#include <QQuickWindow>

int main(int argc, char **argv) {
    corvane::useUtf8Locale();
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("corvane"));
    corvane::setUpLook(application);
    return corvane::runCorvane(
        corvane::applicationFolders::applicationSupport(), {}, [&](QQuickWindow &window) {
            QObject::connect(&window, &QQuickWindow::frameSwapped, &application,
                             &QCoreApplication::quit, Qt::QueuedConnection);
        });
}
