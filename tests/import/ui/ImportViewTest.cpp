#include "../ImportSheetFixture.h"
#include "support/screens/Screen.h"
#include "support/TestMedia.h"

#include <QAccessible>
#include <QFile>

namespace corvane::test {
namespace {

using Stage = ImportViewModel::Stage;

constexpr auto kWindow = R"(
    import QtQuick
    import Corvane.Import
    import Corvane.Kit
    AppWindow {
        id: window
        required property ImportSheet sheet
        ImportView { sheet: window.sheet }
    })";

/// The import sheet over an empty window.
class ImportViewTest : public ImportSheetFixture {
  protected:
    void SetUp() override {
        sheet.open();
        settle();
        EXPECT_TRUE(hasFocus("import.chooseFolder"));
    }

    static QString named(const char *name) { return QString::fromUtf8(name); }
    QString clip(const char *name) const { return makeClip(at(named(name)), {.frames = 5}); }
    void click(const char *name) { screen.click(name); }
    QString text(const char *name) const { return screen.textOf(name); }
    bool hasFocus(const char *name) const {
        // A list passes the focus to its current row.
        return screen.waitFor([&] {
            for (const QQuickItem *item = screen.focused(); item; item = item->parentItem()) {
                if (!item->objectName().isEmpty()) {
                    return item->objectName() == named(name) ||
                           item->objectName().startsWith(named(name).chopped(1) + QLatin1Char('.'));
                }
            }
            return false;
        });
    }
    bool reaches(Stage stage, const char *shown) const {
        return screen.waitFor([&] { return sheet.stage() == stage && screen.shows(shown); });
    }
    /// Uses the buttons to get from the sources to the results.
    void scanCards(const QStringList &sources) {
        panels.answer = sources.first();
        panels.files = sources;
        click("import.chooseFiles");
        click("import.scan");
        EXPECT_TRUE(reaches(Stage::results, "import.begin"));
        settle();
    }
    /// Waits until the previous sheet has faded out.
    void settle() {
        EXPECT_TRUE(screen.waitFor([&] {
            const auto sheets = screen.root()->findChildren<QObject *>(named("import.sheet"));
            const auto runs = screen.root()->findChildren<QObject *>(named("import.running"));
            return sheets.first()->property("opened").toBool() !=
                   runs.first()->property("opened").toBool();
        }));
    }

    Screen screen{kWindow, {1440, 900}, {{named("sheet"), QVariant::fromValue(&sheet)}}};
};

} // namespace

TEST_F(ImportViewTest, ImportsInPlaceByKeyboard) {
    clip("cards/a.mov");
    clip("cards/b.mov");
    folder.write("cards/b.xml", "<a/>");
    folder.write("cards/notes.txt", "-");
    panels.answer = cards;
    screen.picture("import-sources-empty");
    screen.key(Qt::Key_Return);
    EXPECT_TRUE(screen.waitFor([&] { return screen.shows("import.source.0"); }));
    for (const char *next : {"import.chooseFiles", "import.sources", "import.recursive",
                             "import.cancel", "import.scan"}) {
        screen.key(Qt::Key_Tab);
        EXPECT_TRUE(hasFocus(next)) << next;
    }
    screen.picture("import-sources");
    screen.key(Qt::Key_Return);
    ASSERT_TRUE(reaches(Stage::results, "import.begin"));
    EXPECT_TRUE(hasFocus("import.begin"));
    EXPECT_EQ(text("import.leftOut"), named("Left out: 1 file that isn't a video or audio file"));
    screen.key(Qt::Key_Tab, Qt::ShiftModifier);
    screen.key(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_TRUE(hasFocus("import.rows"));
    screen.key(Qt::Key_Space);
    EXPECT_EQ(text("import.included"), named("1 included"));
    screen.key(Qt::Key_Down);
    screen.key(Qt::Key_Space);
    EXPECT_FALSE(screen.property("import.begin", "enabled").toBool());
    screen.key(Qt::Key_Space);
    screen.key(Qt::Key_Return);
    ASSERT_TRUE(reaches(Stage::done, "import.more"));
    EXPECT_TRUE(hasFocus("import.more"));
    settle();
    screen.picture("import-done");
    EXPECT_TRUE(screen.shows("import.counter.sidecars"));
    EXPECT_FALSE(screen.shows("import.counter.failed"));
    ASSERT_EQ(store.project()->videos.size(), 1);
    EXPECT_EQ(store.project()->videos.first()->sourcePath, at("cards/b.mov"));
    screen.key(Qt::Key_Return);
    EXPECT_TRUE(hasFocus("import.chooseFolder"));
    screen.key(Qt::Key_Escape);
    EXPECT_FALSE(sheet.isOpen());
}

TEST_F(ImportViewTest, CopiesByMouseAndShowsFailures) {
    clip("cards/a.mov");
    folder.folder("other");
    clip("other/b.mov");
    scanCards({cards, at("other")});
    screen.click("import.mode.1");
    EXPECT_TRUE(screen.waitFor([&] {
        return Screen::accessibleName(screen.item("import.destination")) ==
               named("media folder (created on import)");
    }));
    ASSERT_TRUE(QFile::rename(at("other"), at("gone")));
    click("import.begin");
    ASSERT_TRUE(reaches(Stage::done, "import.more"));
    settle();
    EXPECT_TRUE(screen.shows("import.counter.failed"));
    EXPECT_FALSE(screen.shows("import.failure.0"));
    click("import.details.line");
    EXPECT_TRUE(Screen::accessibleName(screen.item("import.failure.0"))
                    .startsWith(named("b.mov: Cannot read")));
    screen.picture("import-failures");
    ASSERT_EQ(store.project()->videos.size(), 1);
    EXPECT_EQ(store.project()->videos.first()->sourcePath, at("p/media/a.mov"));
    EXPECT_GT(store.project()->videos.first()->durationSeconds, 0);
    click("import.finish");
    EXPECT_FALSE(sheet.isOpen());
}

TEST_F(ImportViewTest, CannotBeClosedDuringARunAndEscCancels) {
    clip("cards/a.mov");
    clip("cards/b.mov");
    scanCards({cards});
    screen.click("import.mode.1");
    BlockedCopy blocked(named("b.mov"));
    click("import.begin");
    ASSERT_TRUE(reaches(Stage::importing, "import.running.cancel"));
    ASSERT_TRUE(screen.waitFor([&] { return text("import.running.figure") == named("2 / 2"); }));
    EXPECT_TRUE(hasFocus("import.running.cancel"));
    settle();
    screen.picture("import-running");
    screen.click(QPoint(5, 5));
    EXPECT_TRUE(sheet.isOpen());
    screen.key(Qt::Key_Escape);
    EXPECT_EQ(text("import.running.cancel"), named("Cancelling…"));
    screen.key(Qt::Key_Escape);
    EXPECT_TRUE(sheet.isOpen());
    sheet.openWith({at("p")});
    blocked.resume();
    ASSERT_TRUE(reaches(Stage::done, "import.more"));
    EXPECT_EQ(text("import.doneNotice"), named("Cancelled. 1 video was not imported."));
    settle();
    screen.picture("import-cancelled");
    EXPECT_EQ(store.project()->videos.size(), 1);
    click("import.more");
    EXPECT_EQ(import.sourceURLs(), QStringList(at("p"))) << "added during the run";
}

TEST_F(ImportViewTest, ArrowKeysSkipImportedRowsAndLongNamesFit) {
    for (const char *name : {"b.mov", "d.mov"}) {
        folder.write(named("cards/") + named(name), noise(9000, quint32(name[0])));
    }
    scanCards({cards});
    click("import.begin");
    ASSERT_TRUE(reaches(Stage::done, "import.more"));
    settle();
    click("import.more");
    folder.write("cards/a\nline.mov", noise(70'000, 1));
    folder.write(named("cards/c") + QString(240, QLatin1Char('x')) + named(".mov"), noise(900, 2));
    folder.write("cards/b.xml", "<a/>");
    folder.write("p/media/e.mov", "e");
    folder.write("cards/e.mov", noise(5'000'000, 3));
    folder.write("cards/e.xml", "<e/>");
    scanCards({cards});
    screen.click("import.mode.1");
    screen.key(Qt::Key_Tab);
    EXPECT_TRUE(hasFocus("import.row.0"));
    screen.key(Qt::Key_Down);
    EXPECT_TRUE(hasFocus("import.row.2"));
    screen.key(Qt::Key_Down);
    EXPECT_TRUE(hasFocus("import.row.4"));
    screen.key(Qt::Key_Home);
    screen.key(Qt::Key_Space);
    EXPECT_EQ(text("import.included"), named("2 included"));
    screen.click("import.row.3"); // imported already
    EXPECT_EQ(text("import.included"), named("2 included"));
    screen.click("import.row.0");
    EXPECT_EQ(text("import.included"), named("3 included"));
    EXPECT_EQ(Screen::accessibleRole(screen.item("import.row.4")), QAccessible::CheckBox);
    EXPECT_EQ(Screen::accessibleName(screen.item("import.row.0")), named("a line.mov"));
    EXPECT_FALSE(screen.shows("import.cancel")) << "a button of the former stage";
    screen.picture("import-results");
    screen.window()->resize(960, 600);
    EXPECT_TRUE(screen.waitFor([&] { return screen.root()->property("width") == 960; }));
    const QQuickItem *rows = screen.item("import.rows");
    EXPECT_TRUE(screen.waitFor([&] { return rows->mapToScene({rows->width(), 0}).x() < 960; }));
    screen.picture("import-results-960");
    screen.key(Qt::Key_Escape);
    EXPECT_TRUE(hasFocus("import.scan"));
}

TEST_F(ImportViewTest, CreatesDelegatesOnlyForVisibleRows) {
    for (int number = 0; number < 3000; ++number) {
        folder.write(QStringLiteral("cards/C%1.mov").arg(number, 4, 10, QLatin1Char('0')), "x");
    }
    scanCards({cards});
    screen.key(Qt::Key_Tab, Qt::ShiftModifier);
    screen.key(Qt::Key_Tab, Qt::ShiftModifier);
    screen.key(Qt::Key_End);
    EXPECT_TRUE(hasFocus("import.row.2999"));
    screen.key(Qt::Key_Space);
    EXPECT_EQ(text("import.included"), named("2999 included"));
    EXPECT_LT(screen.visibleItems().size(), 3000);
}

TEST_F(ImportViewTest, AddsDroppedSources) {
    clip("cards/a.mov");
    screen.drop({QUrl::fromLocalFile(cards), QUrl::fromLocalFile(at("cards/a.mov"))});
    EXPECT_EQ(import.sourceURLs(), (QStringList{cards, at("cards/a.mov")}));
    screen.drop({QUrl(named("https://a.example/b.mov"))});
    EXPECT_TRUE(screen.shows("import.sourcesNotice"));
    EXPECT_EQ(sheet.sources()->count(), 2);
    screen.picture("import-dropped");
    click("import.source.0.remove");
    screen.click("import.source.0");
    screen.key(Qt::Key_Delete);
    EXPECT_TRUE(screen.shows("import.noSources"));
    EXPECT_TRUE(hasFocus("import.chooseFolder"));
}

} // namespace corvane::test
