#include "kit/Fonts.h"
#include "platform/ApplicationFolders.h"
#include "platform/Paths.h"
#include "platform/ProcessLocale.h"
#include "shell/ProjectModule.h"
#include "shell/ui/Application.h"

#include <QGuiApplication>
#include <QIcon>

#include <clocale>
#include <cstdio>

int main(int argc, char **argv) {
    corvane::useUtf8Locale();
    if (const int invalid = corvane::firstInvalidArgument(argc, argv)) {
        std::fprintf(stderr, "Argument %d is not valid UTF-8, so no path can be made of it.\n",
                     invalid);
        return 2;
    }
    QGuiApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C"); // number parsers require it; Qt has set the user's locale
    QGuiApplication::setApplicationName(QStringLiteral("corvane"));
    QGuiApplication::setDesktopFileName(QStringLiteral("corvane"));
    QGuiApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("corvane")));
    corvane::setUpFonts(application);
    const std::jthread preloading = corvane::preloadFonts();
    const QStringList arguments = QGuiApplication::arguments().mid(1);
    if (arguments.size() > 1) {
        std::fputs("corvane opens one project file at a time.\n", stderr);
        return 2;
    }
    return corvane::runCorvane(
        {.dataFolder = corvane::applicationFolders::applicationSupport(),
         .file = arguments.isEmpty() ? QString() : corvane::paths::standardized(arguments.first()),
         .makeProjectScreen = corvane::projectModule::makeProjectScreen});
}
