#include "ShellFixture.h"

#include <QSignalSpy>

using namespace corvane;
using namespace corvane::test;
using testing::EndsWith;
using testing::StartsWith;

namespace {

using Screen = ContentRouter::Screen;

class ContentRouterTest : public ShellTest {
  protected:
    QString file = make("Harbor.corvane", sampleProject(2));
};

class ProjectSetupTest : public ShellTest {
  protected:
    ProjectSetup &setup = *app.setup();

    void SetUp() override { Q_EMIT app.requests()->newProjectRequested(); }
    /// Creates the project at the path chosen in the panel.
    void create(const QString &path) {
        panels.answer = path;
        setup.create();
        waitUntil([this] { return !setup.isCreating(); });
    }
};

} // namespace

TEST_F(ContentRouterTest, ShowsTheScreenAndTheTitleForTheSessionState) {
    ContentRouter &router = *app.router();
    EXPECT_EQ(router.screen(), Screen::Home);
    EXPECT_EQ(router.windowTitle(), QStringLiteral("Corvane"));
    Q_EMIT app.requests()->newProjectRequested();
    EXPECT_EQ(router.screen(), Screen::Setup);
    app.setup()->setProjectName(QStringLiteral("Half typed"));
    open(file);
    EXPECT_EQ(router.screen(), Screen::Project);
    EXPECT_EQ(router.windowTitle(),
              app.store().project()->displayName() + QStringLiteral(" — Corvane"));
    await(app.store().closeProject());
    EXPECT_EQ(router.screen(), Screen::Home) << "opening a project leaves the setup";
    EXPECT_EQ(router.windowTitle(), QStringLiteral("Corvane"));
    EXPECT_TRUE(app.setup()->projectName().isEmpty());
}

TEST_F(ContentRouterTest, ANewProjectSavesAndClosesTheOpenOneFirst) {
    open(file);
    QList<Screen> screens;
    QObject::connect(app.router(), &ContentRouter::screenChanged,
                     [&] { screens.append(app.router()->screen()); });
    app.store().setRating(QStringLiteral("clip-0"), 3);
    app.router()->setHeld(true);
    command("newProject").trigger();
    EXPECT_TRUE(app.store().project()) << "a run is in progress";
    app.router()->setHeld(false);
    waitUntil([&] { return !app.store().project(); });
    EXPECT_EQ(screens, QList{Screen::Setup});
    EXPECT_EQ(ProjectFileIO::loadNow(file).videos.at(0)->rating, 3);

    open(file);
    app.store().setRating(QStringLiteral("clip-0"), 4);
    folder.write("Harbor.corvane", "changed by another program");
    command("newProject").trigger();
    waitUntil([&] { return app.store().lastError().has_value(); });
    EXPECT_EQ(app.router()->screen(), Screen::Project) << "it can't be saved";
    await(app.store().closeProject(ProjectStore::UnsavedEdits::Discard));
    EXPECT_EQ(app.router()->screen(), Screen::Home);
}

TEST_F(ContentRouterTest, AcceptsOneDroppedProjectFile) {
    const QUrl project = QUrl::fromLocalFile(file);
    EXPECT_TRUE(ContentRouter::canOpenDropped({project}));
    EXPECT_TRUE(ContentRouter::canOpenDropped({QUrl(QStringLiteral("file:///a/B.CORVANE"))}));
    EXPECT_FALSE(ContentRouter::canOpenDropped({}));
    EXPECT_FALSE(ContentRouter::canOpenDropped({project, project}));
    EXPECT_FALSE(ContentRouter::canOpenDropped({QUrl(QStringLiteral("file:///a/b.mov"))}));
    EXPECT_FALSE(ContentRouter::canOpenDropped({QUrl(QStringLiteral("https://a/b.corvane"))}));
}

TEST_F(ContentRouterTest, ListsRecentProjectsNewestFirst) {
    const QString other = make("Other.corvane", sampleProject(1));
    RecentProjectsModel &recents = *app.recents();
    const auto textAt = [&](int row, RecentProjectsModel::Role role) {
        return recents.data(recents.index(row), role).toString();
    };
    open(file);
    clock.advance(std::chrono::seconds(1));
    open(other);
    ASSERT_EQ(recents.count(), 2);
    EXPECT_EQ(textAt(0, RecentProjectsModel::FilePathRole), other);
    EXPECT_EQ(textAt(1, RecentProjectsModel::CountTextRole), QStringLiteral("2 videos"));
    clock.advance(std::chrono::seconds(1));
    QSignalSpy moves(&recents, &QAbstractItemModel::rowsMoved);
    recents.open(1);
    waitUntil([&] { return textAt(0, RecentProjectsModel::FilePathRole) == file; });
    EXPECT_EQ(moves.count(), 1);

    recents.remove(5);
    recents.open(-1);
    EXPECT_EQ(recents.count(), 2);
}

TEST_F(ContentRouterTest, TheHeaderShowsTheProjectAndExplainsDisabledButtons) {
    ProjectHeader &header = *app.header();
    open(file);
    EXPECT_EQ(header.projectName(), app.store().project()->displayName());
    EXPECT_FALSE(header.hasSelects());
    EXPECT_EQ(header.exportHelp(), QStringLiteral("Mark clips with the S flag in Review first"));
    EXPECT_EQ(header.handoffHelp(), header.exportHelp());
    app.store().toggleSelectedForExport(QStringLiteral("clip-0"));
    EXPECT_EQ(header.exportHelp(), QStringLiteral("Export selects (Ctrl+E)"));
    EXPECT_EQ(header.handoffHelp(),
              QStringLiteral("Bundle selects + media into a portable .corvane package "
                             "(Ctrl+Shift+E)"));
}

TEST_F(ProjectSetupTest, RequiresAValidName) {
    const std::string tooLongForAFile(300, 'x');
    const std::pair<std::string, bool> names[] = {
        {"", false},    {"  \t\n", false}, {".hidden", false},     {"  .hidden", false},
        {"a/b", false}, {"a.b", true},     {" Día 2 – 🌊 ", true}, {tooLongForAFile, true}};
    for (const auto &[name, isValid] : names) {
        setup.setProjectName(QString::fromStdString(name));
        EXPECT_EQ(setup.canCreate(), isValid) << name;
        setup.create();
        EXPECT_EQ(std::exchange(panels.shown, 0), isValid ? 1 : 0) << name;
    }
}

TEST_F(ProjectSetupTest, PreviewsTheLayout) {
    EXPECT_EQ(setup.layoutPreview(),
              QStringLiteral("<parent>/MyProject/\n"
                             "    MyProject.corvane\n"
                             "    .corvane-cache/   (created lazily)\n"
                             "    selects/          (created on first export)"));
    setup.setProjectName(QStringLiteral(" 100%1 "));
    setup.setCreateProjectFolder(false);
    EXPECT_EQ(setup.layoutPreview(), QStringLiteral("<parent>/100%1.corvane"));
}

TEST_F(ProjectSetupTest, CreatesAFolderOrAFileWithTheFields) {
    setup.setProjectName(QStringLiteral(" Tidewater "));
    setup.setIncludeShootDate(true);
    setup.setShootDateText(QStringLiteral("2024-02-30"));
    EXPECT_EQ(setup.shootDate(), clock.now().toLocalTime().date()) << "an invalid date is ignored";
    setup.setShootDateText(QStringLiteral("2024-02-29"));
    setup.setClientOrSeries(QStringLiteral("  "));
    setup.setNotes(QStringLiteral("Low water 14:20.\n"));
    create(folder.at("new/Folder"));
    EXPECT_EQ(
        panels.asked,
        (FilePanels::SavePanel{
            .message = QStringLiteral("Choose where to create the \"Tidewater\" project folder."),
            .nameFieldLabel = QStringLiteral("Folder name:"),
            .proposedName = QStringLiteral("Tidewater")}));
    EXPECT_EQ(alert(), QString());
    EXPECT_TRUE(app.store().pendingImportOnLoad());
    const Project created = ProjectFileIO::loadNow(folder.at("new/Folder/Tidewater.corvane"));
    EXPECT_EQ(created.shootDate, QStringLiteral("2024-02-29"));
    EXPECT_FALSE(created.clientOrSeries);
    EXPECT_EQ(created.notes, QStringLiteral("Low water 14:20."));

    await(app.store().closeProject());
    SetUp();
    setup.setProjectName(QStringLiteral("Plain"));
    setup.setCreateProjectFolder(false);
    create(folder.at("Other name"));
    EXPECT_EQ(
        panels.asked,
        (FilePanels::SavePanel{.message = QStringLiteral("Choose where to save the .corvane file."),
                               .proposedName = QStringLiteral("Plain.corvane"),
                               .choosesProjectFile = true}));
    const Project plain = ProjectFileIO::loadNow(folder.at("Other name.corvane"));
    EXPECT_EQ(plain.name, QStringLiteral("Plain"));
    EXPECT_FALSE(plain.shootDate);
}

TEST_F(ProjectSetupTest, AFailureShowsAnAlertAndTheFieldsStay) {
    folder.write("file", "in the way");
    const QString longName(300, QLatin1Char('x'));
    const std::tuple<QString, bool, QString, QString> failures[] = {
        {longName, true, longName, QStringLiteral("File name too long")},
        {longName, false, longName, QStringLiteral("File name too long")},
        {QStringLiteral("a"), true, QStringLiteral("file/a"), QStringLiteral("Not a directory")},
        {QStringLiteral("a"), false, QStringLiteral("gone/a"),
         QStringLiteral("No such file or directory")},
        {QStringLiteral("a\0b"), true, QStringLiteral("x"), QStringLiteral("Invalid argument")},
    };
    setup.setNotes(QStringLiteral("kept"));
    for (const auto &[name, createsFolder, path, reason] : failures) {
        setup.setProjectName(name);
        setup.setCreateProjectFolder(createsFolder);
        create(folder.at(path));
        EXPECT_THAT(alert().toStdString(), StartsWith("Create failed: Failed to write "));
        EXPECT_THAT(alert().toStdString(), EndsWith(reason.toStdString()));
        EXPECT_EQ(app.router()->screen(), Screen::Setup);
        EXPECT_EQ(setup.projectName(), name);
        EXPECT_EQ(setup.notes(), QStringLiteral("kept"));
        EXPECT_TRUE(setup.canCreate());
        EXPECT_FALSE(app.store().pendingImportOnLoad());
        app.router()->dismissError();
    }
    create({});
    EXPECT_EQ(alert(), QString()) << "a cancelled panel changes nothing";
    EXPECT_TRUE(setup.canCreate());
}
