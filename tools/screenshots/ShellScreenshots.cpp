#include "Screenshot.h"

#include "platform/AtomicWrite.h"
#include "platform/Paths.h"
#include "platform/Tasks.h"
#include "shell/CorvaneApp.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>

namespace corvane {

namespace {

constexpr QSize shellSize(1440, 900);

constexpr const char *recentList = R"([
    {"id": "A", "name": "Tidewater Day 2", "videoCount": 86,
     "filePath": "/shoots/tidewater/Tidewater Day 2/Tidewater Day 2.corvane",
     "lastOpenedAt": "2025-06-13T10:00:00.000Z"},
    {"id": "B", "name": "Lantern Row", "videoCount": 412,
     "filePath": "/shoots/lantern-row/Lantern Row.corvane",
     "lastOpenedAt": "2025-06-12T10:00:00.000Z"},
    {"id": "C", "name": "North Ridge Interviews", "videoCount": 1204,
     "filePath": "/archive/2024/north-ridge/North Ridge Interviews/North Ridge Interviews.corvane",
     "lastOpenedAt": "2025-06-11T10:00:00.000Z"},
    {"id": "D", "name": "Copper Kiln - Selects", "videoCount": 37,
     "filePath": "/deliveries/incoming/Copper Kiln - Selects/Copper Kiln - Selects.corvane",
     "lastOpenedAt": "2025-06-10T10:00:00.000Z"}])";

/// An application and its data folder. Owned by the window that shows it.
class ShellApp : public QObject {
  public:
    explicit ShellApp(bool hasRecents) {
        if (hasRecents) {
            writeAtomically(folder.filePath(QStringLiteral("registry.json")), recentList);
        }
        app = std::make_unique<CorvaneApp>(CorvaneApp::Settings{
            .dataFolder = folder.path(),
            .userDefaults = std::make_unique<QSettings>(
                folder.filePath(QStringLiteral("defaults.ini")), QSettings::IniFormat),
            .hashes = ContentHashMigration::Awaited});
        waitUntilDone(app->store().waitForStartUp());
    }

    QTemporaryDir folder;
    std::unique_ptr<CorvaneApp> app;
};

using Arrange = std::function<void(ShellApp &, QObject &)>;

Screenshot shellScreenshot(const char *name, bool hasRecents, Arrange arrange) {
    return {QLatin1String(name), shellSize, [hasRecents, arrange](QQmlEngine &engine) {
                auto shell = std::make_unique<ShellApp>(hasRecents);
                auto window =
                    createWindow(engine, "import Corvane.Shell\nMainWindow {}",
                                 {{QStringLiteral("app"), QVariant::fromValue(shell->app.get())}});
                if (window && arrange) {
                    arrange(*shell, *window);
                }
                shell.release()->setParent(window.get());
                return window;
            }};
}

void fillSetup(ShellApp &shell, QObject &) {
    ProjectSetup &setup = *shell.app->setup();
    Q_EMIT shell.app->requests()->newProjectRequested();
    setup.setProjectName(QStringLiteral("Tidewater Day 3"));
    setup.setIncludeShootDate(true);
    setup.setShootDateText(QStringLiteral("2025-06-13"));
    setup.setLocation(QStringLiteral("Fallow Inlet, east bank"));
    setup.setNotes(QStringLiteral("Second unit joins at noon. Low water 14:20."));
}

void openMissingRecent(ShellApp &shell, QObject &) {
    waitUntilDone(shell.app->store().openProject(QStringLiteral(
        "/archive/2024/north-ridge/North Ridge Interviews/North Ridge Interviews.corvane")));
}

void openFileMenu(ShellApp &, QObject &window) {
    auto *const menu = window.findChild<QObject *>(QStringLiteral("menu.File"));
    if (menu) {
        QMetaObject::invokeMethod(menu, "open");
    }
}

/// The user guide at the default size of its window.
Screenshot helpScreenshot() {
    return {QStringLiteral("help"), QSize(820, 700), [](QQmlEngine &engine) {
                auto help = std::make_unique<HelpDocument>(QStringLiteral(CORVANE_GUIDE));
                auto window =
                    createWindow(engine, "import Corvane.Shell\nHelpWindow {}",
                                 {{QStringLiteral("help"), QVariant::fromValue(help.get())}});
                help.release()->setParent(window.get());
                return window;
            }};
}

} // namespace

QList<Screenshot> shellScreenshots() {
    return {
        shellScreenshot("home-empty", false, {}),
        shellScreenshot("home", true, {}),
        shellScreenshot("setup", true, fillSetup),
        shellScreenshot("alert", true, openMissingRecent),
        shellScreenshot("menu", true, openFileMenu),
        helpScreenshot(),
    };
}

} // namespace corvane
