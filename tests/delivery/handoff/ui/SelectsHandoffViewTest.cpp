#include "delivery/handoff/HandoffFixture.h"
#include "delivery/handoff/HandoffSheet.h"
#include "media/FFmpegExportSessions.h"
#include "support/screens/Screen.h"
#include "support/TestMedia.h"
#include "support/TestPanels.h"

#include <QSignalSpy>

namespace corvane::test {
namespace {

constexpr auto kView = R"(
    import QtQuick
    import Corvane.Handoff
    import Corvane.Kit
    AppWindow {
        id: window
        property var handoff
        color: Theme.windowBackground
        SelectsHandoffView {
            sheet: window.handoff
        }
    })";

class SelectsHandoffViewTest : public HandoffTest {
  protected:
    void show(media::ExportSessionFactory &factory, const CacheFunctions &functions) {
        grantAndOpen();
        flow = std::make_unique<SelectsHandoffViewModel>(
            &store, factory, functions,
            std::make_unique<QSettings>(at("defaults.ini"), QSettings::IniFormat));
        state = std::make_unique<HandoffSheet>(*flow, store, panels, clock);
        screen = std::make_unique<Screen>(
            kView, QSize(1440, 900),
            QVariantMap{{QStringLiteral("handoff"), QVariant::fromValue(state.get())}});
        state->open();
    }
    /// Waits until that item has the focus, and its sheet is the only one.
    bool hasFocus(const char *name) const {
        return screen->waitFor([&] {
            const QQuickItem *focused = screen->focused();
            return focused && focused->objectName() == text(name) && sheets() == 1;
        });
    }
    qsizetype sheets() const {
        const QList names{text("handoff.configure.start"), text("handoff.running.cancel"),
                          text("handoff.done.done")};
        return std::ranges::count_if(names, [this](const QString &n) { return screen->shows(n); });
    }
    QString shown(const char *name) const {
        return screen->property(text(name), "text").toString();
    }

    TestPanels panels;
    std::unique_ptr<SelectsHandoffViewModel> flow;
    std::unique_ptr<HandoffSheet> state;
    std::unique_ptr<Screen> screen;
};

} // namespace

TEST_F(SelectsHandoffViewTest, MakesAPackageByKeysAndClicks) {
    VideoRecord &clip = addVideo("A003_C002_0612.mov", "");
    makeClip(clip.sourcePath, {.frames = 75});
    clip.durationSeconds = 3;
    clip.fileSizeBytes = 38'000'000'000;
    addSubclip(clip, "Pole lift, wide").outSeconds = 2.5;
    addVideo("A003_C007_0612.mov", noise(5000));
    show(media::ffmpegExportSessions(), {});
    EXPECT_TRUE(hasFocus("handoff.folder.choose")) << "there is no destination yet";
    EXPECT_FALSE(screen->item(text("handoff.configure.start"))->isEnabled());
    EXPECT_FALSE(screen->item(text("handoff.recent"))->isEnabled());
    panels.answer = at("out");
    screen->key(Qt::Key_Return);
    EXPECT_EQ(shown("handoff.folder.path"), at("out"));
    screen->click(text("handoff.projectName"));
    screen->key(Qt::Key_A, Qt::ControlModifier);
    screen->type(text("Tidewater Day 2 - Selects"));
    screen->click(text("handoff.output.1"));
    screen->picture(text("handoff-configure"));
    screen->click(text("handoff.naming.preset.2"));
    EXPECT_TRUE(screen->shows(text("handoff.naming.numbering")));
    screen->picture(text("handoff-custom"));
    screen->click(text("handoff.naming.preset.0"));

    screen->click(text("handoff.configure.start"));
    EXPECT_TRUE(hasFocus("handoff.done.done"));
    EXPECT_EQ(shown("handoff.done.headline"), text("Handoff complete"));
    EXPECT_EQ(ProjectFileIO::loadNow(
                  at("out/Tidewater Day 2 - Selects/Tidewater Day 2 - Selects.corvane"))
                  .videos.size(),
              3);
    screen->picture(text("handoff-done"));
    QSignalSpy reveals(state.get(), &DeliverySheet::revealWanted);
    screen->click(text("handoff.done.reveal"));
    screen->click(text("handoff.done.revealFolder"));
    EXPECT_THAT(reveals, testing::ElementsAre(QVariantList{at("out/Tidewater Day 2 - Selects")},
                                              QVariantList{at("out")}));

    screen->click(text("handoff.done.again"));
    EXPECT_TRUE(hasFocus("handoff.configure.start"));
    flow->setDestinationFolder({});
    screen->click(text("handoff.recent"));
    EXPECT_TRUE(screen->waitFor([this] { return screen->shows(text("handoff.recent.0")); }));
    screen->picture(text("handoff-recent"));
    screen->key(Qt::Key_Down);
    screen->key(Qt::Key_Return);
    EXPECT_TRUE(hasFocus("handoff.recent"));
    EXPECT_EQ(shown("handoff.folder.path"), at("out"));
    screen->click(text("handoff.configure.back"));
    EXPECT_FALSE(state->isOpen());
}

TEST_F(SelectsHandoffViewTest, TheSheetOfARunIsLostToNothingAndItsEndIsTold) {
    addSubclip(addVideo("a.mov", "1"), "x");
    addVideo("b.mov", "2");
    show(sessions, cache.functions());
    sessions.halfway = [this](const QString &) {
        const auto work = [this] {
            EXPECT_TRUE(hasFocus("handoff.running.cancel"));
            EXPECT_EQ(shown("handoff.running.details"), text("Extracting subclip"));
            screen->click(QPoint(5, 5));
            EXPECT_TRUE(screen->shows(text("handoff.running.cancel")));
            screen->picture(text("handoff-running"));
            screen->key(Qt::Key_Return);
            screen->key(Qt::Key_Escape);
            EXPECT_EQ(shown("handoff.running.cancel"), text("Cancelling…"));
            EXPECT_FALSE(screen->item(text("handoff.running.cancel"))->isEnabled());
            screen->key(Qt::Key_Escape);
            detach(store.closeProject());
        };
        QMetaObject::invokeMethod(qApp, work, Qt::BlockingQueuedConnection);
    };
    flow->setDestinationFolder(at("out"));
    screen->click(text("handoff.configure.start"));
    EXPECT_TRUE(hasFocus("handoff.done.done"));
    EXPECT_EQ(shown("handoff.done.headline"), text("Handoff cancelled"));
    EXPECT_FALSE(store.project());
    screen->key(Qt::Key_Escape);
    EXPECT_FALSE(state->isOpen());
}

} // namespace corvane::test
