#include "ShellFixture.h"

using namespace corvane;
using namespace corvane::test;

namespace {

using AppCommandsTest = ShellTest;

/// A line for each entry: label, shortcut, and "-" before what is disabled.
QStringList described(const AppMenu &menu) {
    QStringList lines;
    for (const MenuEntry &entry : menu.entries) {
        const AppCommand *const command = entry.command;
        lines.append(entry.isRecentProjects ? AppCommands::openRecentLabel()
                     : !command             ? QStringLiteral("divider")
                                : (command->isEnabled() ? QString() : QStringLiteral("-")) +
                                      command->label() + QLatin1Char('|') + command->shortcut());
    }
    return lines;
}

const QStringList kFileMenu{QStringLiteral("New Project|Ctrl+N"),
                            QStringLiteral("Open Project…|Ctrl+O"),
                            QStringLiteral("Open Recent"),
                            QStringLiteral("Save Project|Ctrl+S"),
                            QStringLiteral("Close Project|Ctrl+Shift+W"),
                            QStringLiteral("divider"),
                            QStringLiteral("Import Footage…|Ctrl+I"),
                            QStringLiteral("Export…|Ctrl+E"),
                            QStringLiteral("Selects Handoff…|Ctrl+Shift+E")};

QStringList fileMenuWithDisabled(const QList<int> &lines) {
    QStringList menu = kFileMenu;
    for (const int line : lines) {
        menu[line].prepend(QLatin1Char('-'));
    }
    return menu;
}

} // namespace

TEST_F(AppCommandsTest, MenusTellEveryCommandAndWhenItMayRun) {
    const auto &menus = app.commands()->menus();
    ASSERT_EQ(menus.size(), 2);
    EXPECT_EQ(described(menus[1]),
              QStringList({QStringLiteral("Corvane Help|Ctrl+?"), QStringLiteral("divider"),
                           QStringLiteral("Check for Updates…|")}));
    EXPECT_EQ(described(menus[0]), fileMenuWithDisabled({3, 4, 6, 7, 8}));

    open(make(QStringLiteral("Harbor.corvane"), sampleProject(2, 1)));
    EXPECT_EQ(described(menus[0]), fileMenuWithDisabled({8}));
    EXPECT_EQ(command("selectsHandoff").toolTip(),
              QStringLiteral("Mark clips with the S flag in Review first"));

    app.store().toggleSubclipSelected({QStringLiteral("clip-1"), QStringLiteral("clip-1-sub-0")});
    EXPECT_EQ(described(menus[0]), kFileMenu) << "one selected subclip is a select";
    EXPECT_EQ(
        command("selectsHandoff").toolTip(),
        QStringLiteral("Bundle selects + their media + cache into a portable .corvane package"));
    await(app.store().closeProject());
    EXPECT_EQ(described(menus[0]), fileMenuWithDisabled({3, 4, 6, 7, 8}));
}

TEST_F(AppCommandsTest, EachCommandPostsItsRequestAndADisabledOneNothing) {
    QStringList posted;
    const auto note = [&](const char *name) {
        return [&posted, name] { posted.append(QLatin1String(name)); };
    };
    QObject::connect(app.requests(), &AppRequests::newProjectRequested, note("newProject"));
    QObject::connect(app.requests(), &AppRequests::openProjectRequested, note("openProject"));
    QObject::connect(app.requests(), &AppRequests::importRequested, note("import"));
    QObject::connect(app.requests(), &AppRequests::exportRequested, note("export"));
    QObject::connect(app.requests(), &AppRequests::selectsHandoffRequested, note("selectsHandoff"));
    QObject::connect(app.commands(), &AppCommands::helpRequested, note("help"));
    const char *const ids[] = {"newProject", "openProject",    "import",
                               "export",     "selectsHandoff", "help"};
    const auto triggerAll = [&] {
        posted.clear();
        for (const char *const id : ids) {
            command(id).trigger();
        }
        return posted.join(QLatin1Char(' ')).toStdString();
    };
    EXPECT_EQ(triggerAll(), "newProject openProject help");
    open(make(QStringLiteral("Harbor.corvane"), sampleProject(1)));
    app.store().toggleSelectedForExport(QStringLiteral("clip-0"));
    EXPECT_EQ(triggerAll(), "newProject openProject import export selectsHandoff help");
}

TEST_F(AppCommandsTest, SaveAndCloseWriteWhatWasTyped) {
    const QString file = make(QStringLiteral("Harbor.corvane"), sampleProject(1));
    const auto rating = [&] { return ProjectFileIO::loadNow(file).videos.at(0)->rating; };
    open(file);
    app.store().setRating(QStringLiteral("clip-0"), 3);
    command("saveProject").trigger();
    waitUntil([&] { return !app.store().isDirty(); });
    EXPECT_EQ(rating(), 3);
    app.store().setRating(QStringLiteral("clip-0"), 5);
    command("closeProject").trigger();
    waitUntil([&] { return !app.store().project(); });
    EXPECT_EQ(rating(), 5);
}

TEST_F(AppCommandsTest, AnUpdateCheckWithoutAKeyOnlyLogsItsRefusal) {
    const LogCapture log;
    command("checkForUpdates").trigger();
    EXPECT_EQ(LogCapture::lines(),
              QStringList(QStringLiteral(
                  "app.corvane.Corvane.Updater: Refusing update check: SUPublicEDKey is blank in "
                  "Info.plist. EdDSA verification cannot function without the key.")));
    EXPECT_TRUE(app.updater()->resultText().isEmpty());
    EXPECT_TRUE(command("checkForUpdates").isEnabled());
}
