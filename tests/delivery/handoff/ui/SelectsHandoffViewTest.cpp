#include "delivery/DeliveryScreen.h"
#include "delivery/handoff/HandoffFixture.h"
#include "delivery/handoff/HandoffSheet.h"
#include "media/ExportSession.h"
#include "support/TestMedia.h"
#include "support/TestPanels.h"

#include <QSignalSpy>

namespace corvane::test {
namespace {

class SelectsHandoffViewTest : public HandoffTest {
  protected:
    void show(media::ExportSessionFactory &factory, const CacheFunctions &functions) {
        grantAndOpen();
        flow = std::make_unique<SelectsHandoffViewModel>(&store, factory, functions, settings());
        sheet = std::make_unique<HandoffSheet>(*flow, store, panels, clock);
        screen = std::make_unique<DeliveryScreen>("Handoff", "SelectsHandoffView", sheet.get());
        sheet->open();
    }

    TestPanels panels;
    std::unique_ptr<SelectsHandoffViewModel> flow;
    std::unique_ptr<HandoffSheet> sheet;
    std::unique_ptr<DeliveryScreen> screen;
};

} // namespace

TEST_F(SelectsHandoffViewTest, DeliversAPackageByKeyboardAndMouse) {
    VideoRecord &clip = addVideo("A003_C002_0612.mov", "");
    makeClip(clip.sourcePath, {.frames = 75});
    clip.durationSeconds = 3;
    clip.fileSizeBytes = 38'000'000'000;
    addSubclip(clip, "Pole lift, wide").outSeconds = 2.5;
    addVideo("A003_C007_0612.mov", noise(5000));
    show(media::ffmpegExportSessions(), {});
    EXPECT_TRUE(screen->hasFocus("handoff.folder.choose")) << "there is no destination yet";
    EXPECT_FALSE(screen->item("handoff.configure.start")->isEnabled());
    EXPECT_FALSE(screen->item("handoff.recent")->isEnabled());
    panels.answer = at("out");
    screen->key(Qt::Key_Return);
    EXPECT_EQ(screen->textOf("handoff.folder.path"), at("out"));
    screen->click("handoff.projectName");
    screen->key(Qt::Key_A, Qt::ControlModifier);
    screen->type("Tidewater Day 2 - Selects");
    screen->click("handoff.output.1");
    screen->picture("handoff-configure");
    screen->click("handoff.naming.preset.2");
    EXPECT_TRUE(screen->shows("handoff.naming.numbering"));
    screen->picture("handoff-custom");
    screen->click("handoff.naming.preset.0");

    screen->click("handoff.configure.start");
    EXPECT_TRUE(screen->hasFocus("handoff.done.done"));
    EXPECT_EQ(screen->textOf("handoff.done.headline"), text("Handoff complete"));
    EXPECT_EQ(ProjectFileIO::loadNow(
                  at("out/Tidewater Day 2 - Selects/Tidewater Day 2 - Selects.corvane"))
                  .videos.size(),
              3);
    screen->picture("handoff-done");
    QSignalSpy reveals(sheet.get(), &DeliverySheet::revealWanted);
    screen->click("handoff.done.reveal");
    screen->click("handoff.done.revealFolder");
    EXPECT_THAT(reveals, testing::ElementsAre(QVariantList{at("out/Tidewater Day 2 - Selects")},
                                              QVariantList{at("out")}));

    screen->click("handoff.done.again");
    EXPECT_TRUE(screen->hasFocus("handoff.configure.start"));
    flow->setFolder({});
    screen->click("handoff.recent");
    EXPECT_TRUE(screen->waitFor([this] { return screen->shows("handoff.recent.0"); }));
    screen->picture("handoff-recent");
    screen->key(Qt::Key_Down);
    screen->key(Qt::Key_Return);
    EXPECT_TRUE(screen->hasFocus("handoff.recent"));
    EXPECT_EQ(screen->textOf("handoff.folder.path"), at("out"));
    screen->click("handoff.configure.back");
    EXPECT_FALSE(sheet->isOpen());
}

TEST_F(SelectsHandoffViewTest, KeepsTheSheetOpenDuringARunAndShowsItsResult) {
    addSubclip(addVideo("a.mov", "1"), "x");
    addVideo("b.mov", "2");
    show(sessions, cache.functions());
    sessions.halfway = [this](const QString &) {
        const auto cancel = [this] {
            EXPECT_TRUE(screen->hasFocus("handoff.running.cancel"));
            EXPECT_EQ(screen->textOf("handoff.running.details"), text("Extracting subclip"));
            screen->click(QPoint(5, 5));
            EXPECT_TRUE(screen->shows("handoff.running.cancel"));
            screen->picture("handoff-running");
            screen->key(Qt::Key_Return);
            screen->key(Qt::Key_Escape);
            EXPECT_EQ(screen->textOf("handoff.running.cancel"), text("Cancelling…"));
            EXPECT_FALSE(screen->item("handoff.running.cancel")->isEnabled());
            screen->key(Qt::Key_Escape);
            detach(store.closeProject());
        };
        QMetaObject::invokeMethod(qApp, cancel, Qt::BlockingQueuedConnection);
    };
    flow->setFolder(at("out"));
    screen->click("handoff.configure.start");
    EXPECT_TRUE(screen->hasFocus("handoff.done.done"));
    EXPECT_EQ(screen->textOf("handoff.done.headline"), text("Handoff cancelled"));
    EXPECT_FALSE(store.project());
    screen->key(Qt::Key_Escape);
    EXPECT_FALSE(sheet->isOpen());
}

} // namespace corvane::test
