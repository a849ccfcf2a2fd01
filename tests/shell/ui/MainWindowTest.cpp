#include "WindowFixture.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace corvane;
using namespace corvane::test;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class MainWindowTest : public WindowTest {
  protected:
    /// Returns the text of the alert that `action` causes, and dismisses the alert.
    std::string alertAfter(const std::function<void()> &action) {
        action();
        EXPECT_TRUE(appears("projectError.accept"));
        const QQuickItem *const accept = screen->item("projectError.accept");
        EXPECT_LT(accept->mapToScene({0, accept->height()}).y(), screen->window()->height());
        const std::string message = alert().toStdString();
        click("projectError.accept");
        EXPECT_TRUE(disappears("projectError.accept"));
        EXPECT_FALSE(app.router()->hasError());
        return message;
    }
    /// Clicks a title in the menu bar.
    void openMenu(const QString &title) {
        for (QQuickItem *const item : screen->visibleItems()) {
            if (item->inherits("QQuickMenuBarItem") && item->property("text") == title) {
                screen->click(item->mapToScene({10, 10}).toPoint());
                return;
            }
        }
        ADD_FAILURE() << "no menu " << title.toStdString();
    }
    void openRecentMenu() {
        openMenu(QStringLiteral("File"));
        ASSERT_TRUE(appears("menu.openProject"));
        screen->key(Qt::Key_Down);
        screen->key(Qt::Key_Down);
        screen->key(Qt::Key_Down);
        screen->key(Qt::Key_Right);
        ASSERT_TRUE(appears("menu.recent.0"));
    }
    /// A menu item as "label|shortcut|help text", prefixed with "-" if it is disabled.
    std::string row(const char *name) {
        const QQuickItem *const item = screen->item(name);
        const auto part = [item](const char *property) {
            return item->property(property).toString().toStdString();
        };
        return !item ? std::string()
                     : (item->isEnabled() ? "" : "-") + part("text") + '|' + part("shortcutText") +
                           '|' + part("helpText");
    }
    QString file = make("Harbor.corvane", sampleProject(2, 1));
    QString bad = folder.write("bad.corvane", "{");
};

} // namespace

TEST_F(MainWindowTest, MenusShowTheStateOfCommandsAndShortcutsTriggerThem) {
    show();
    openMenu(QStringLiteral("File"));
    ASSERT_TRUE(appears("menu.selectsHandoff"));
    EXPECT_EQ(row("menu.saveProject"), "-Save Project|Ctrl+S|");
    EXPECT_EQ(row("menu.selectsHandoff"),
              "-Selects Handoff…|Ctrl+Shift+E|Mark clips with the S flag in Review first");
    screen->key(Qt::Key_Escape);
    ASSERT_TRUE(disappears("menu.selectsHandoff"));
    open(file);
    app.store().setRating(QStringLiteral("clip-0"), 3);
    screen->key(Qt::Key_S, Qt::ControlModifier);
    waitUntil([&] { return !app.store().isDirty(); });
    screen->key(Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(appears("home.newProject"));
    screen->key(Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(appears("setup.projectName"));
}

TEST_F(MainWindowTest, KeysOpenMenusAndLettersChooseTheirRows) {
    show();
    open(file);
    ASSERT_TRUE(reviewGetsFocus());
    const auto highlighted = [&](const char *row) {
        return screen->property(row, "highlighted").toBool();
    };
    screen->key(Qt::Key_F10);
    ASSERT_TRUE(appears("menu.newProject"));
    EXPECT_TRUE(highlighted("menu.newProject"));
    screen->key(Qt::Key_Down);
    EXPECT_TRUE(highlighted("menu.openProject"));
    screen->key(Qt::Key_F10);
    ASSERT_TRUE(disappears("menu.newProject"));
    EXPECT_TRUE(reviewGetsFocus());
    screen->key(Qt::Key_H, Qt::AltModifier);
    ASSERT_TRUE(appears("menu.help"));
    screen->key(Qt::Key_Escape);
    ASSERT_TRUE(disappears("menu.help"));
    EXPECT_TRUE(reviewGetsFocus());
    screen->key(Qt::Key_F, Qt::AltModifier);
    ASSERT_TRUE(appears("menu.openProject"));
    screen->key(Qt::Key_H); // disabled
    EXPECT_TRUE(shows("menu.openProject"));
    screen->key(Qt::Key_R);
    ASSERT_TRUE(appears("menu.recent.0"));
    screen->key(Qt::Key_Escape);
    ASSERT_TRUE(disappears("menu.recent.0"));
    screen->key(Qt::Key_C);
    EXPECT_TRUE(appears("home.newProject")) << "C closes the project";
}

TEST_F(MainWindowTest, FollowsTheKeysForFullScreenHelpAndQuit) {
    show();
    QQuickWindow &window = *screen->window();
    EXPECT_EQ(window.title(), QStringLiteral("Corvane"));
    open(file);
    EXPECT_EQ(window.title(), app.router()->windowTitle());
    screen->key(Qt::Key_F11);
    EXPECT_EQ(window.visibility(), QWindow::FullScreen);
    EXPECT_TRUE(command("fullScreen").isChecked());
    screen->key(Qt::Key_F11);
    EXPECT_EQ(window.visibility(), QWindow::Windowed);
    EXPECT_FALSE(command("fullScreen").isChecked());
    window.showFullScreen(); // by the desktop
    EXPECT_TRUE(screen->waitFor([&] { return command("fullScreen").isChecked(); }));
    command("fullScreen").trigger();
    EXPECT_EQ(window.visibility(), QWindow::Windowed);
    const auto helpIsVisible = [] {
        return std::ranges::any_of(QGuiApplication::topLevelWindows(), [](const QWindow *each) {
            return each->objectName() == QStringLiteral("help") && each->isVisible();
        });
    };
    screen->key(Qt::Key_F1);
    EXPECT_TRUE(helpIsVisible());
    screen->key(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_TRUE(screen->waitFor([&] { return !window.isVisible(); }));
}

TEST_F(MainWindowTest, TheGuideIsSelectedAcrossItsBlocksAndCopied) {
    HelpDocument guide(
        folder.write("guide.md", "# Tide\n\n- Low **water**\n[Web](https://a.example) & more"));
    Screen help("import Corvane.Shell\nHelpWindow {}", {820, 700},
                {{QStringLiteral("help"), QVariant::fromValue(&guide)}});
    ASSERT_TRUE(help.waitFor([&] { return help.shows("helpView.line.3"); }));
    QClipboard &clipboard = *QGuiApplication::clipboard();
    const auto copied = [&] {
        help.key(Qt::Key_C, Qt::ControlModifier);
        return clipboard.text().toStdString();
    };
    const auto point = [&](const char *line, int x, int y) {
        return help.item(line)->mapToScene({qreal(x), qreal(y)}).toPoint();
    };
    clipboard.setText(QStringLiteral("before"));
    EXPECT_EQ(copied(), "before") << "there is no selection yet";
    help.key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(copied(), "Tide\n\n• Low water\nWeb & more");
    help.drag(point("helpView.line.2", 0, 10), point("helpView.line.3", 500, 10));
    EXPECT_EQ(copied(), "• Low water\nWeb & more");
    help.click(point("helpView.line.0", 20, 20), Qt::NoModifier, Qt::RightButton);
    ASSERT_TRUE(help.waitFor([&] { return help.shows("helpView.selectAll"); }));
    help.key(Qt::Key_A);
    ASSERT_TRUE(help.waitFor([&] { return !help.shows("helpView.selectAll"); }));
    EXPECT_EQ(copied(), "Tide\n\n• Low water\nWeb & more");
}

TEST_F(MainWindowTest, HomeOpensAndRemovesRecentProjects) {
    show();
    EXPECT_TRUE(shows("home.empty"));
    screen->key(Qt::Key_Down);
    EXPECT_TRUE(hasFocus("home.newProject")) << "the list is empty";
    EXPECT_EQ(text("home.version"), CorvaneApp::versionText());
    const QString other = make("Other.corvane", sampleProject(1));
    const QString third = make("Third.corvane", sampleProject(1));
    for (const QString &each : {file, other, third}) {
        open(each);
        clock.advance(std::chrono::seconds(1));
    }
    await(app.store().closeProject());
    ASSERT_TRUE(appears("home.recent.2"));
    EXPECT_FALSE(shows("home.empty"));
    click("home.recent.0.remove");
    EXPECT_TRUE(disappears("home.recent.2"));
    EXPECT_FALSE(app.store().project()) << "the cross does not open the project";
    screen->key(Qt::Key_Tab);
    screen->item("home.newProject")->forceActiveFocus();
    screen->key(Qt::Key_Down);
    screen->key(Qt::Key_Delete);
    EXPECT_TRUE(disappears("home.recent.1"));
    EXPECT_TRUE(folder.has("Other.corvane"));
    screen->key(Qt::Key_Return);
    EXPECT_TRUE(appears("header.projectName"));
    EXPECT_EQ(app.store().fileURL(), file);
    click("header.close");
    ASSERT_TRUE(appears("home.recent.0"));
    click("home.recent.0");
    EXPECT_TRUE(appears("header.projectName"));
}

TEST_F(MainWindowTest, OpenRecentListsTheNewestFirstAndTabReachesTheMenus) {
    show();
    const QString other = make("Other.corvane", sampleProject(1));
    for (const QString &each : {file, other, file}) {
        open(each);
        clock.advance(std::chrono::seconds(1));
    }
    await(app.store().closeProject());
    openRecentMenu();
    EXPECT_EQ(screen->property("menu.recent.0", "y").toInt(), 0);
    EXPECT_GT(screen->property("menu.recent.1", "y").toInt(), 0);
    screen->key(Qt::Key_Escape);
    ASSERT_TRUE(disappears("menu.recent.0"));
    screen->key(Qt::Key_Escape);
    ASSERT_TRUE(disappears("menu.openProject"));
    screen->item("home.newProject")->forceActiveFocus(Qt::TabFocusReason);
    screen->key(Qt::Key_Backtab);
    screen->key(Qt::Key_Down);
    EXPECT_TRUE(appears("menu.checkForUpdates"));
}

TEST_F(MainWindowTest, EachWayToFailShowsOneAlertOverTheCurrentScreen) {
    open(file);
    await(app.store().closeProject());
    show();
    QFile::remove(file);
    panels.answer = bad;
    const auto openRecentByMenu = [&] {
        openRecentMenu();
        click("menu.recent.0");
    };
    EXPECT_THAT(alertAfter([&] { click("home.openProject"); }),
                StartsWith("Open failed: " + bad.toStdString()));
    EXPECT_THAT(alertAfter([&] { click("home.recent.0"); }),
                StartsWith("Open failed: Failed to read "));
    EXPECT_THAT(alertAfter(openRecentByMenu), StartsWith("Open failed: Failed to read "));
    EXPECT_THAT(alertAfter([&] { drop(bad); }), HasSubstr("is not a valid"));
    EXPECT_THAT(alertAfter([&] { app.router()->open(bad); }), HasSubstr("is not a valid"));
    const QString endless = QLatin1Char('/') + QString(4000, QLatin1Char('x'));
    EXPECT_THAT(alertAfter([&] { app.router()->open(endless); }), EndsWith("File name too long"));
    EXPECT_TRUE(shows("home.recent.0"));
}

TEST_F(MainWindowTest, TheAlertAboutAForeignChangeHasAButtonForEachWayOut) {
    open(file);
    show();
    const auto conflict = [this](int rating) {
        Project foreign = ProjectFileIO::loadNow(file);
        foreign.notes = QString::number(rating);
        make(QStringLiteral("Harbor.corvane"), foreign);
        app.store().setRating(QStringLiteral("clip-0"), rating);
        await(app.store().flushPendingSave());
        EXPECT_TRUE(appears("projectFile.choice2"));
        EXPECT_EQ(text("header.notice"), QStringLiteral("Unsaved changes"));
    };
    conflict(1);
    screen->key(Qt::Key_Escape);
    EXPECT_TRUE(disappears("projectFile.accept"));
    conflict(2);
    click("projectFile.choice2");
    EXPECT_TRUE(disappears("projectFile.accept"));
    waitUntil([&] { return app.store().project()->notes == QStringLiteral("2"); });
    EXPECT_FALSE(shows("projectError.accept"));
}

TEST_F(MainWindowTest, AProjectIsCreatedFromWhatIsTyped) {
    show();
    click("home.newProject");
    ASSERT_TRUE(appears("setup.projectName"));
    EXPECT_FALSE(screen->item("setup.create")->isEnabled());
    screen->type("Tide/");
    EXPECT_FALSE(screen->item("setup.create")->isEnabled());
    screen->key(Qt::Key_Backspace);
    EXPECT_THAT(text("setup.layoutPreview").toStdString(), StartsWith("<parent>/Tide/\n"));
    EXPECT_FALSE(shows("setup.shootDate"));
    click("setup.includeShootDate");
    ASSERT_TRUE(appears("setup.shootDate"));
    click("setup.notes");
    screen->type("Low water.");

    EXPECT_EQ(app.setup()->notes(), QStringLiteral("Low water."));
    panels.answer = folder.at("new");
    click("setup.create");
    ASSERT_TRUE(appears("header.projectName"));
    EXPECT_EQ(text("header.projectName"), QStringLiteral("Tide"));
    EXPECT_EQ(text("header.status"), QStringLiteral("Created project Tide"));
    EXPECT_TRUE(folder.has("new/Tide.corvane"));
    EXPECT_TRUE(appears("import.cancel")) << "the import sheet opens after creation";
    leaveSheet();
    click("header.close");
    ASSERT_TRUE(appears("home.newProject"));
    click("home.newProject");
    ASSERT_TRUE(appears("setup.back"));
    EXPECT_EQ(text("setup.projectName"), QString());
    screen->window()->resize(960, 600);
    ASSERT_TRUE(screen->waitFor([&] { return screen->item("setup")->height() < 600; }));
    screen->item("setup.cancel")->forceActiveFocus(Qt::TabFocusReason);
    EXPECT_LT(screen->item("setup.cancel")->mapToScene({0, 0}).y(), 560);
    screen->key(Qt::Key_Return);
    EXPECT_TRUE(appears("home.newProject"));
}

TEST_F(MainWindowTest, OpensADroppedProjectWhoseHeaderButtonsWork) {
    show();
    drop(folder.write("take.mov", "x"));
    drop(file);
    ASSERT_TRUE(appears("header.import"));
    int exports = 0;
    QObject::connect(app.requests(), &AppRequests::exportRequested, [&] { ++exports; });
    click("header.export");
    EXPECT_EQ(exports, 0);
    app.store().toggleSelectedForExport(QStringLiteral("clip-0"));
    click("header.export");
    EXPECT_EQ(exports, 1);
    EXPECT_EQ(Screen::accessibleName(screen->item("header.help")),
              QStringLiteral("Open Corvane User Guide (F1)"));
    screen->picture("project");
}

TEST_F(MainWindowTest, HelpOpensASingleWindow) {
    show();
    command("help").trigger();
    command("help").trigger();
    QList<QQuickWindow *> helps;
    for (QWindow *const window : QGuiApplication::topLevelWindows()) {
        if (window->objectName() == QStringLiteral("help") && window->isVisible()) {
            helps.append(qobject_cast<QQuickWindow *>(window));
        }
    }
    ASSERT_EQ(helps.size(), 1);
    EXPECT_EQ(helps[0]->title(), QStringLiteral("Corvane Help"));
    EXPECT_EQ(helps[0]->size(), QSize(820, 700));
    EXPECT_EQ(helps[0]->minimumSize(), QSize(760, 640));
    const auto *const error = helps[0]->findChild<QQuickItem *>(QStringLiteral("helpView.error"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->property("text"), QStringLiteral("UserGuide.md not found in bundle."))
        << "a test executable has no guide in its resources";
}

TEST_F(MainWindowTest, TheFileDialogShowsTheRequestAndReturnsTheAnswer) {
    show();
    QString chosen;
    const auto note = [&](const QString &path) { chosen = path; };
    app.dialogs()->openProjectFile(note);
    app.dialogs()->accept({QUrl::fromLocalFile(file)}); // sets the next initial folder
    EXPECT_EQ(std::exchange(chosen, {}), file);
    app.dialogs()->save(
        {.message = QStringLiteral("Where?"), .proposedName = QStringLiteral("Tide")}, note);
    const auto part = [&](const char *property, const QString &value) -> QQuickItem * {
        const auto items = screen->visibleItems();
        const auto found = std::ranges::find_if(
            items, [&](const QQuickItem *item) { return item->property(property) == value; });
        return found == items.end() ? nullptr : *found;
    };
    ASSERT_TRUE(screen->waitFor([&] { return part("text", QStringLiteral("Save")); }));
    EXPECT_TRUE(part("text", QStringLiteral("Where?")));
    EXPECT_TRUE(part("text", QStringLiteral("Tide")));
    screen->click(part("text", QStringLiteral("Save"))->mapToScene({8, 8}).toPoint());
    waitUntil([&] { return !chosen.isEmpty(); });
    EXPECT_EQ(chosen, folder.at("Tide"));
}
