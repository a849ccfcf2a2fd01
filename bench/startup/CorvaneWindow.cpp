// Starts the program until its first frame, with the data folder of the environment.
#include "kit/Fonts.h"
#include "platform/ApplicationFolders.h"
#include "platform/ProcessLocale.h"
#include "shell/ProjectModule.h"
#include "shell/ui/Application.h"

#include <QGuiApplication>
#include <QQuickWindow>

#include <cstdio>

int main(int argc, char **argv) {
    corvane::useUtf8Locale();
    QGuiApplication application(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("corvane"));
    corvane::setUpFonts(application);
    const std::jthread preloading = corvane::preloadFonts();
    return corvane::runCorvane({.dataFolder = corvane::applicationFolders::applicationSupport(),
                                .makeProjectScreen = corvane::projectModule::makeProjectScreen,
                                .onWindowCreated = [&](QQuickWindow &window) {
                                    QObject::connect(
                                        &window, &QQuickWindow::frameSwapped, &application,
                                        [] {
                                            std::puts("frame");
                                            std::fflush(stdout);
                                            QCoreApplication::quit();
                                        },
                                        Qt::QueuedConnection);
                                }});
}
