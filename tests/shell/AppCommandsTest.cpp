#include "ShellFixture.h"

using namespace corvane;
using namespace corvane::test;

namespace {

using AppCommandsTest = ShellTest;

/// The label, shortcut and help text of each entry, in lines; "-" before a disabled one.
std::string describe(const AppMenu &menu) {
    QString lines;
    for (const MenuEntry &entry : menu.entries) {
        const AppCommand *const command = entry.command;
        const QString parts =
            command ? QStringList{command->label(), command->shortcut(), command->toolTip()}.join(
                          QLatin1Char('|'))
                    : QString();
        lines += command ? (command->isEnabled() ? QString() : QStringLiteral("-")) + parts
                 : entry.isRecentProjects ? AppCommands::openRecentLabel()
                                          : QStringLiteral("---");
        lines += QLatin1Char('\n');
    }
    return lines.toStdString();
}

} // namespace

TEST_F(AppCommandsTest, MenusListEveryCommandAndWhyItIsDisabled) {
    const auto &menus = app.commands()->menus();
    ASSERT_EQ(menus.size(), 2);
    EXPECT_EQ(describe(menus[0]),
              "New Project|Ctrl+N|\nOpen Project…|Ctrl+O|\nOpen Recent\n-Save Project|Ctrl+S|\n"
              "-Save a Copy…||\n-Close Project|Ctrl+Shift+W|\n-Close Without Saving…||\n---\n"
              "-Import Footage…|Ctrl+I|\n-Export…|Ctrl+E|\n"
              "-Selects Handoff…|Ctrl+Shift+E|Mark clips with the S flag in Review first\n");
    EXPECT_EQ(describe(menus[1]), "Corvane Help|Ctrl+?|\n---\nCheck for Updates…||\n");
    open(make("Harbor.corvane", sampleProject(1)));
    app.store().toggleSelectedForExport(QStringLiteral("clip-0"));
    EXPECT_EQ(describe(menus[0]),
              "New Project|Ctrl+N|\nOpen Project…|Ctrl+O|\nOpen Recent\nSave Project|Ctrl+S|\n"
              "Save a Copy…||\nClose Project|Ctrl+Shift+W|\n-Close Without Saving…||\n---\n"
              "Import Footage…|Ctrl+I|\nExport…|Ctrl+E|\n"
              "Selects Handoff…|Ctrl+Shift+E|Bundle selects + their media + cache into a portable "
              ".corvane package\n");
}

TEST_F(AppCommandsTest, EnabledCommandsEmitTheirRequest) {
    QStringList emitted;
    const auto note = [&](const char *name) {
        return [&emitted, name] { emitted.append(QLatin1String(name)); };
    };
    QObject::connect(app.requests(), &AppRequests::newProjectRequested, note("newProject"));
    QObject::connect(app.requests(), &AppRequests::openProjectRequested, note("openProject"));
    QObject::connect(app.requests(), &AppRequests::importRequested, note("import"));
    QObject::connect(app.requests(), &AppRequests::exportRequested, note("export"));
    QObject::connect(app.requests(), &AppRequests::selectsHandoffRequested, note("selectsHandoff"));
    QObject::connect(app.commands(), &AppCommands::helpRequested, note("help"));
    const auto triggerAll = [&] {
        emitted.clear();
        for (const char *const id :
             {"newProject", "openProject", "import", "export", "selectsHandoff", "help"}) {
            command(id).trigger();
        }
        return emitted.join(QLatin1Char(' ')).toStdString();
    };
    EXPECT_EQ(triggerAll(), "newProject openProject help");
    open(make("Harbor.corvane", sampleProject(2, 1)));
    EXPECT_EQ(triggerAll(), "newProject openProject import export help");
    app.store().toggleSubclipSelected({QStringLiteral("clip-1"), QStringLiteral("clip-1-sub-0")});
    EXPECT_EQ(triggerAll(), "newProject openProject import export selectsHandoff help");
    await(app.store().closeProject());
    EXPECT_EQ(triggerAll(), "newProject openProject help");
}

TEST_F(AppCommandsTest, LogsAnUpdateCheckWithoutAKey) {
    const LogCapture log;
    command("checkForUpdates").trigger();
    EXPECT_EQ(LogCapture::lines(),
              QStringList(QStringLiteral(
                  "app.corvane.Corvane.Updater: Refusing update check: SUPublicEDKey is blank in "
                  "Info.plist. EdDSA verification cannot function without the key.")));
    EXPECT_TRUE(app.updater()->resultText().isEmpty());
    EXPECT_TRUE(command("checkForUpdates").isEnabled());
}
