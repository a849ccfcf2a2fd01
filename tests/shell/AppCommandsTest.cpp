#include "ShellFixture.h"

using namespace corvane;
using namespace corvane::test;

namespace {

using AppCommandsTest = ShellTest;

QString marked(QString label, int mnemonic) {
    return label.insert(mnemonic, QLatin1Char('&'));
}

/// The menu's title, and in lines the label, shortcut and help text of each entry; "&" before the
/// letter that chooses an entry, "-" before a disabled one.
std::string describe(const AppMenu &menu) {
    QString lines = marked(menu.title, menu.mnemonic) + QLatin1Char('\n');
    for (const MenuEntry &entry : menu.entries) {
        const AppCommand *const command = entry.command;
        const QString parts = command ? QStringList{marked(command->label(), entry.mnemonic),
                                                    command->shortcut(), command->toolTip()}
                                            .join(QLatin1Char('|'))
                                      : QString();
        lines += command ? (command->isEnabled() ? QString() : QStringLiteral("-")) + parts
                 : entry.isRecentProjects ? marked(AppCommands::openRecentLabel(), entry.mnemonic)
                                          : QStringLiteral("---");
        lines += QLatin1Char('\n');
    }
    return lines.toStdString();
}

} // namespace

TEST_F(AppCommandsTest, MenusListEveryCommandAndWhyItIsDisabled) {
    const auto &menus = app.commands()->menus();
    ASSERT_EQ(menus.size(), 3);
    EXPECT_EQ(describe(menus[0]),
              "&File\n&New Project|Ctrl+N|\n&Open Project…|Ctrl+O|\nOpen &Recent\n"
              "-&Save Project|Ctrl+S|\n-Save &a Copy…||\n-&Close Project|Ctrl+Shift+W|\n"
              "-Close &Without Saving…||\n---\n"
              "-&Import Footage…|Ctrl+I|\n-&Export…|Ctrl+E|\n"
              "-Selects &Handoff…|Ctrl+Shift+E|Mark clips with the S flag in Review first\n---\n"
              "&Quit|Ctrl+Q|\n");
    EXPECT_EQ(describe(menus[1]), "&View\n&Full Screen|F11|\n");
    EXPECT_EQ(describe(menus[2]), "&Help\n&Corvane Help|F1|\n---\nCheck &for Updates…||\n");
    open(make("Harbor.corvane", sampleProject(1)));
    app.store().toggleSelectedForExport(QStringLiteral("clip-0"));
    EXPECT_EQ(describe(menus[0]),
              "&File\n&New Project|Ctrl+N|\n&Open Project…|Ctrl+O|\nOpen &Recent\n"
              "&Save Project|Ctrl+S|\nSave &a Copy…||\n&Close Project|Ctrl+Shift+W|\n"
              "-Close &Without Saving…||\n---\n"
              "&Import Footage…|Ctrl+I|\n&Export…|Ctrl+E|\n"
              "Selects &Handoff…|Ctrl+Shift+E|Bundle selects + their media + cache into a portable "
              ".corvane package\n---\n&Quit|Ctrl+Q|\n");
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
    QObject::connect(app.commands(), &AppCommands::quitRequested, note("quit"));
    const auto triggerAll = [&] {
        emitted.clear();
        for (const char *const id :
             {"newProject", "openProject", "import", "export", "selectsHandoff", "help", "quit"}) {
            command(id).trigger();
        }
        return emitted.join(QLatin1Char(' ')).toStdString();
    };
    EXPECT_EQ(triggerAll(), "newProject openProject help quit");
    open(make("Harbor.corvane", sampleProject(2, 1)));
    EXPECT_EQ(triggerAll(), "newProject openProject import export help quit");
    app.store().toggleSubclipSelected({QStringLiteral("clip-1"), QStringLiteral("clip-1-sub-0")});
    EXPECT_EQ(triggerAll(), "newProject openProject import export selectsHandoff help quit");
    await(app.store().closeProject());
    EXPECT_EQ(triggerAll(), "newProject openProject help quit");
}

TEST_F(AppCommandsTest, RefusesAnUpdateCheckWithoutAKeyAndSaysSo) {
    const LogCapture log;
    command("checkForUpdates").trigger();
    EXPECT_EQ(LogCapture::lines(),
              QStringList(QStringLiteral(
                  "app.corvane.Corvane.Updater: Refusing update check: SUPublicEDKey is blank in "
                  "Info.plist. EdDSA verification cannot function without the key.")));
    EXPECT_EQ(app.updater()->resultText(),
              QStringLiteral("This build of Corvane can't check for updates, because it has no key "
                             "to verify them with. Ask whoever provided it for the newest "
                             "version."));
    EXPECT_TRUE(command("checkForUpdates").isEnabled());
}
