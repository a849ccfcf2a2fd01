#include "import/ImportScreenState.h"
#include "support/Await.h"
#include "support/screens/Screen.h"
#include "support/TestClock.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QFile>
#include <QMimeData>

namespace corvane::test {
namespace {

using Stage = ImportScreenState::Stage;

constexpr auto kWindow = R"(
    import QtQuick
    import Corvane.Import
    import Corvane.Kit
    AppWindow {
        id: window
        required property ImportScreenState flow
        ImportView { screen: window.flow }
    })";

/// Answers each panel with the paths that were set before.
class PathPanels : public FilePanels {
  public:
    void openProjectFile(Chosen) override {}
    void save(const SavePanel &, Chosen) override {}
    void chooseFolder(const ChoosePanel &, Chosen chosen) override { chosen(paths.first()); }
    void chooseFiles(const ChoosePanel &, ChosenFiles chosen) override { chosen(paths); }

    QStringList paths;
};

/// The import's sheet over an empty window, for a new project with a folder "cards" beside it.
class ImportViewTest : public testing::Test {
  protected:
    ImportViewTest() {
        await(store.createProject({.name = QStringLiteral("Shoot")}, projectFile));
    }
    void SetUp() override {
        flow.open();
        EXPECT_TRUE(hasFocus("import.chooseFolder"));
    }

    QString at(const char *name) const { return folder.at(QString::fromLatin1(name)); }
    QString clip(const char *name) const { return makeClip(at(name), {.frames = 5}); }
    static QString named(const char *name) { return QString::fromLatin1(name); }
    void click(const char *name) { screen.click(named(name)); }
    QString text(const char *name) const {
        return screen.property(named(name), "text").toString();
    }
    bool hasFocus(const char *name) const {
        // A list hands the focus on to its current row.
        const bool comes = screen.waitFor([&] {
            const QQuickItem *item = screen.focused();
            return item && (item->objectName() == named(name) ||
                            (item->parentItem() && item->parentItem()->parentItem() &&
                             item->parentItem()->parentItem()->objectName() == named(name)));
        });
        EXPECT_TRUE(comes) << name << " hasn't the focus but "
                           << (screen.focused() ? screen.focused()->objectName().toStdString() + screen.focused()->metaObject()->className() : "");
        return comes;
    }
    bool reaches(Stage stage, const char *shown) const {
        return screen.waitFor(
            [&] { return flow.stage() == stage && screen.shows(named(shown)); });
    }
    /// From the sources to the results by the buttons.
    void scanCards(const QStringList &sources) {
        panels.paths = sources;
        click("import.chooseFiles");
        click("import.scan");
        EXPECT_TRUE(reaches(Stage::Results, "import.begin"));
        settle();
    }
    /// Until the sheet before has faded away.
    void settle() {
        EXPECT_TRUE(screen.waitFor([&] {
            const auto sheets = screen.root()->findChildren<QObject *>(named("import.sheet"));
            const auto runs = screen.root()->findChildren<QObject *>(named("import.running"));
            return sheets.first()->property("opened").toBool() !=
                   runs.first()->property("opened").toBool();
        }));
    }
    void drop(const QList<QUrl> &urls) {
        QMimeData data;
        data.setUrls(urls);
        const QPoint where(screen.window()->width() / 2, screen.window()->height() / 2);
        QDragEnterEvent enter(where, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(screen.window(), &enter);
        QDropEvent event(where, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(screen.window(), &event);
    }

    TestFolder folder;
    QString projectFile = at("p/shoot.corvane");
    QString made = folder.folder(QStringLiteral("p"));
    QString cards = folder.folder(QStringLiteral("cards"));
    TestClock clock;
    ProjectFileIO io;
    ProjectRegistry registry{at("data"), clock};
    BackupService backups{clock};
    MediaSourceAuthorization authorization{at("data")};
    ProjectStore store{io, registry, backups, authorization, clock};
    ImportViewModel import{&store};
    PathPanels panels;
    ImportScreenState flow{import, panels, clock};
    Screen screen{kWindow, {1440, 900}, {{named("flow"), QVariant::fromValue(&flow)}}};
};

} // namespace

TEST_F(ImportViewTest, ImportsInPlaceByKeysAlone) {
    clip("cards/a.mov");
    clip("cards/b.mov");
    folder.write(QStringLiteral("cards/b.xml"), "<a/>");
    folder.write(QStringLiteral("cards/notes.txt"), "-");
    panels.paths = {at("cards")};
    screen.picture(named("import-sources-empty"));
    screen.key(Qt::Key_Return);
    EXPECT_TRUE(screen.shows(named("import.source.0")));
    for (const char *next : {"import.chooseFiles", "import.sources", "import.recursive",
                             "import.cancel", "import.scan"}) {
        screen.key(Qt::Key_Tab);
        EXPECT_TRUE(hasFocus(next)) << next;
    }
    screen.picture(named("import-sources"));
    screen.key(Qt::Key_Return);
    ASSERT_TRUE(reaches(Stage::Results, "import.begin"));
    EXPECT_TRUE(hasFocus("import.begin"));
    EXPECT_EQ(text("import.leftOut"), named("Left out: 1 file that isn't a video or audio file"));
    screen.key(Qt::Key_Tab, Qt::ShiftModifier);
    screen.key(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(hasFocus("import.rows"));
    screen.key(Qt::Key_Space);
    EXPECT_EQ(text("import.included"), named("1 included"));
    screen.key(Qt::Key_Down);
    screen.key(Qt::Key_Space);
    EXPECT_FALSE(screen.property(named("import.begin"), "enabled").toBool());
    screen.key(Qt::Key_Space);
    screen.key(Qt::Key_Return);
    ASSERT_TRUE(reaches(Stage::Done, "import.more"));
    EXPECT_TRUE(hasFocus("import.more"));
    settle();
    screen.picture(named("import-done"));
    EXPECT_TRUE(screen.shows(named("import.counter.sidecars")));
    EXPECT_FALSE(screen.shows(named("import.counter.failed")));
    ASSERT_EQ(store.project()->videos.size(), 1);
    EXPECT_EQ(store.project()->videos.first()->sourcePath, at("cards/b.mov"));
    screen.key(Qt::Key_Return);
    EXPECT_TRUE(hasFocus("import.chooseFolder"));
    screen.key(Qt::Key_Escape);
    EXPECT_FALSE(flow.isOpen());
}

} // namespace corvane::test
