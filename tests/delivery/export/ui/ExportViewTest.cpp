#include "delivery/DeliveryScreen.h"
#include "delivery/export/ExportFixture.h"
#include "delivery/export/ExportSheet.h"
#include "media/ExportSession.h"
#include "support/TestMedia.h"
#include "support/TestPanels.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>

namespace corvane::test {
namespace {

class ExportViewTest : public ExportTest {
  protected:
    ExportViewTest() {
        project.shootDate = text("2025-06-12");
        project.projectName = text("Tidewater");
    }
    void show(media::ExportSessionFactory &factory, QSize size = {1440, 900}) {
        grantAndOpen();
        flow = std::make_unique<ExportViewModel>(&store, factory);
        sheet = std::make_unique<ExportSheet>(*flow, store, panels, clock);
        screen = std::make_unique<DeliveryScreen>("Export", "ExportView", sheet.get(), size);
    }
    /// Brings the sheet up and waits until it has the focus.
    void open() {
        sheet->open();
        EXPECT_TRUE(screen->hasFocus("export.configure.start"));
    }

    TestPanels panels;
    std::unique_ptr<ExportViewModel> flow;
    std::unique_ptr<ExportSheet> sheet;
    std::unique_ptr<DeliveryScreen> screen;
};

} // namespace

TEST_F(ExportViewTest, DeliversByKeyboardAndMouse) {
    VideoRecord &clip = addClip("A", "A003_C002_0612.mov", "");
    makeClip(clip.sourcePath, {.frames = 75, .audioTracks = 1});
    clip.durationSeconds = 3;
    addSubclip(clip, 1, 0.5, 2).label = text("Pole lift, wide");
    addClip("B", "A003_C007_0612.mov", noise(5000));
    show(media::ffmpegExportSessions());
    open();
    EXPECT_EQ(screen->textOf("export.folder.path"), at("project/selects"));
    EXPECT_EQ(screen->textOf("export.count"), text("3 rows"));

    panels.answer = at("out");
    screen->click("export.folder.choose");
    ASSERT_TRUE(screen->waitFor([&] { return sheet->folder() == at("out"); }));
    EXPECT_EQ(panels.choice.startFolder, at("project")) << "the chosen folder does not exist yet";
    screen->click("export.output.1");
    screen->click("export.naming.preset.2");
    screen->click("export.naming.keepOriginal");
    screen->click("export.naming.originalFilename");
    screen->click("export.naming.baseName");
    screen->type("Harbor");
    EXPECT_EQ(rowNames(*sheet->rows()).front(), "Harbor.mov");
    screen->click("export.naming.numbering.2");
    EXPECT_THAT(
        rowNames(*sheet->rows()),
        testing::ElementsAre("Harbor_001.mov", "Harbor_002_Pole lift, wide.mov", "Harbor_003.mov"));
    EXPECT_EQ(screen->property("export.preview.1", "name"), sheet->rows()->rows()[1].name);
    screen->picture("export-configure");

    screen->click("export.naming.baseName");
    screen->key(Qt::Key_Return);
    EXPECT_TRUE(screen->hasFocus("export.done.done"));
    EXPECT_EQ(screen->textOf("export.done.headline"), text("Export complete"));
    screen->picture("export-complete");
    EXPECT_TRUE(has("out/Harbor_003.mov") && has("out/HD/Harbor_001.mp4"));

    QSignalSpy reveals(sheet.get(), &DeliverySheet::revealWanted);
    screen->click("export.done.results.0.reveal");
    screen->click("export.done.reveal");
    screen->click("export.done.revealFolder");
    EXPECT_THAT(reveals,
                testing::ElementsAre(QVariantList{at("out/Harbor_001.mov")},
                                     QVariantList{flow->result()->manifestSidecarPath.value()},
                                     QVariantList{at("out")}));
    screen->click("export.done.again");
    EXPECT_TRUE(screen->hasFocus("export.folder.choose")) << "nothing is new";
    EXPECT_EQ(screen->textOf("export.count"), text("0 of 3 rows"));
    EXPECT_TRUE(screen->shows("export.preview.nothing"));
    screen->key(Qt::Key_Escape);
    EXPECT_TRUE(screen->isClosed());
}

TEST_F(ExportViewTest, EscapeCancelsARunAndItsResultsListEachRow) {
    for (const char *name : {"a.mov", "b.mov", "c.mov"}) {
        addClip(name, name, name);
    }
    FakeSessions fakes;
    show(fakes);
    folder.write(footage("a.mov"), "changed");
    open();
    screen->click("export.mode.1");
    fakes.halfway = [this](const QString &) {
        const auto cancel = [this] {
            EXPECT_TRUE(screen->hasFocus("export.running.cancel"));
            EXPECT_EQ(screen->textOf("export.running.file"), text("2 of 3: b.mp4"));
            EXPECT_EQ(screen->textOf("export.running.figure"), text("33%"));
            screen->click(QPoint(5, 5));
            screen->picture("export-running");
            screen->key(Qt::Key_Escape);
            EXPECT_EQ(screen->textOf("export.running.cancel"), text("Force Cancel"));
            EXPECT_EQ(flow->cancelStage(), CancelStage::graceful);
        };
        QMetaObject::invokeMethod(qApp, cancel, Qt::BlockingQueuedConnection);
    };
    screen->click("export.configure.start");
    EXPECT_TRUE(screen->hasFocus("export.done.done"));
    EXPECT_EQ(screen->textOf("export.done.headline"), text("Export cancelled"));
    for (const char *count : {"succeeded", "failed", "cancelled"}) {
        EXPECT_EQ(screen->property(text("export.done.") + text(count), "count"), 1);
    }
    screen->picture("export-cancelled");
    EXPECT_EQ(Screen::accessibleName(screen->item("export.done.results.2")),
              text("c.mp4: Cancelled"));

    QSignalSpy reveals(sheet.get(), &DeliverySheet::revealWanted);
    screen->item("export.done.results.list")->forceActiveFocus();
    screen->key(Qt::Key_Space);
    EXPECT_THAT(reveals, testing::SizeIs(1));
    screen->key(Qt::Key_Down);
    screen->key(Qt::Key_Space);
    EXPECT_THAT(reveals, testing::SizeIs(1)) << "a failed row has no file";
    screen->key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(text("a.mp4: export source")));
    screen->click("export.done.results.1.reason");
    screen->key(Qt::Key_Return);
    EXPECT_TRUE(screen->isClosed());
}

TEST_F(ExportViewTest, ASmallWindowScrollsToTheItemFocusedByTab) {
    VideoRecord &clip = addClip("A", "x.mov", "x");
    for (int index = 1; index <= 2000; ++index) {
        addSubclip(clip, index, 0, 1);
    }
    FakeSessions fakes;
    show(fakes, {1280, 800});
    open();
    screen->click("export.naming.preset.2");
    const QQuickItem *choices = screen->item("export.configure.choices");
    QStringList order;
    for (int stop = 0; stop < 20; ++stop) {
        screen->key(Qt::Key_Tab);
        const QQuickItem *focused = screen->focused();
        order.append(focused->objectName());
        if (choices->isAncestorOf(focused)) {
            EXPECT_TRUE(choices->contains(focused->mapToItem(choices, {0, 0})) &&
                        choices->contains(focused->mapToItem(choices, {0, focused->height()})))
                << order.last().toStdString();
        }
    }
    screen->picture("export-configure-1280x800");
    const QString expected = text(
        "naming.keepOriginal naming.baseName naming.shootDate naming.originalFilename "
        "naming.originalFileNumber naming.numbering naming.subclipLabel naming.selectType "
        "preview.list configure.cancel configure.start configure.back folder.choose mode output "
        "wholeClips subclips newOnly handles naming.preset");
    EXPECT_EQ(
        order.replaceInStrings(text("export."), QString()).join(QLatin1Char(' ')).toStdString(),
        expected.toStdString());

    qsizetype rows = 0;
    for (QQuickItem *item : screen->visibleItems()) {
        rows += Screen::accessibleRole(item) == QAccessible::ListItem;
    }
    EXPECT_TRUE(rows > 10 && rows < 100) << rows;
    const QQuickItem *list = screen->item("export.preview.list");
    screen->item("export.preview.list")->forceActiveFocus();
    screen->key(Qt::Key_End);
    EXPECT_GT(list->property("contentY").toDouble(), 50000);
    await(store.closeProject());
    EXPECT_TRUE(screen->isClosed());
}

} // namespace corvane::test
