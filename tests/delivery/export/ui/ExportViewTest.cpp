#include "delivery/export/ExportFixture.h"
#include "delivery/export/ExportSheet.h"
#include "media/FFmpegExportSessions.h"
#include "support/screens/Screen.h"
#include "support/TestMedia.h"
#include "support/TestPanels.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>

namespace corvane::test {
namespace {

constexpr auto kView = R"(
    import QtQuick
    import Corvane.Export
    import Corvane.Kit
    AppWindow {
        id: window
        property var exporting
        color: Theme.windowBackground
        ExportView {
            sheet: window.exporting
        }
    })";

class ExportViewTest : public ExportTest {
  protected:
    ExportViewTest() {
        project.shootDate = text("2025-06-12");
        project.projectName = text("Tidewater");
    }
    void addSubclip(VideoRecord &video, const char *label, double from, double to) {
        Subclip subclip =
            sampleSubclip(video.id + text(label), video.id, int(video.subclips.size()) + 1);
        subclip.label = text(label);
        subclip.inSeconds = from;
        subclip.outSeconds = to;
        subclip.selectedForExport = true;
        video.subclips.append(subclip);
    }
    void show(media::ExportSessionFactory &factory, QSize size = {1440, 900}) {
        grantAndOpen();
        flow = std::make_unique<ExportViewModel>(&store, factory);
        state = std::make_unique<ExportSheet>(*flow, store, panels, clock);
        screen = std::make_unique<Screen>(
            kView, size,
            QVariantMap{{QStringLiteral("exporting"), QVariant::fromValue(state.get())}});
    }
    /// Brings the sheet up and waits until it has the focus.
    void open() {
        state->open();
        EXPECT_TRUE(hasFocus("export.configure.start"));
    }
    /// Waits until that item has the focus, and its sheet is the only one.
    bool hasFocus(const char *name) const {
        return screen->waitFor([&] {
            const QQuickItem *focused = screen->focused();
            return focused && focused->objectName() == text(name) && sheets() == 1;
        });
    }
    qsizetype sheets() const {
        const QList names{text("export.configure.start"), text("export.running.cancel"),
                          text("export.done.done")};
        return std::ranges::count_if(names, [this](const QString &n) { return screen->shows(n); });
    }
    QString shown(const char *name) const {
        return screen->property(text(name), "text").toString();
    }
    QStringList preview() const {
        QStringList names;
        for (const DeliveryRow &row : state->rows()->rows()) {
            names.append(row.name);
        }
        return names;
    }
    bool isGone() const {
        return screen->waitFor([this] { return sheets() == 0; });
    }

    TestPanels panels;
    std::unique_ptr<ExportViewModel> flow;
    std::unique_ptr<ExportSheet> state;
    std::unique_ptr<Screen> screen;
};

} // namespace

TEST_F(ExportViewTest, DeliversByKeysAndClicks) {
    VideoRecord &film = addClip("A", "A003_C002_0612.mov", "");
    makeClip(film.sourcePath, {.frames = 75, .audioTracks = 1});
    film.durationSeconds = 3;
    addSubclip(film, "Pole lift, wide", 0.5, 2);
    addClip("B", "A003_C007_0612.mov", noise(5000));
    show(media::ffmpegExportSessions());
    open();
    EXPECT_EQ(shown("export.folder.path"), at("project/selects"));
    EXPECT_EQ(shown("export.count"), text("3 rows"));

    panels.answer = at("out");
    screen->click(text("export.folder.choose"));
    EXPECT_EQ(panels.choice.startFolder, at("project")) << "a folder that is still to be made";
    screen->click(text("export.output.1"));
    screen->click(text("export.naming.preset.2"));
    screen->click(text("export.naming.keepOriginal"));
    screen->click(text("export.naming.originalFilename"));
    screen->click(text("export.naming.baseName"));
    screen->type(text("Harbor"));
    EXPECT_EQ(preview().first(), text("Harbor.mov"));
    screen->click(text("export.naming.numbering.2"));
    EXPECT_EQ(preview(),
              (QStringList{text("Harbor_001.mov"), text("Harbor_002_Pole lift, wide.mov"),
                           text("Harbor_003.mov")}));
    EXPECT_EQ(screen->property(text("export.preview.1"), "name"), preview().at(1));
    screen->picture(text("export-configure"));

    screen->click(text("export.naming.baseName"));
    screen->key(Qt::Key_Return);
    EXPECT_TRUE(hasFocus("export.done.done"));
    EXPECT_EQ(shown("export.done.headline"), text("Export complete"));
    screen->picture(text("export-complete"));
    EXPECT_TRUE(has("out/Harbor_003.mov") && has("out/HD/Harbor_001.mp4"));

    QSignalSpy reveals(state.get(), &DeliverySheet::revealWanted);
    screen->click(text("export.done.results.0.reveal"));
    screen->click(text("export.done.reveal"));
    screen->click(text("export.done.revealFolder"));
    EXPECT_THAT(reveals,
                testing::ElementsAre(QVariantList{at("out/Harbor_001.mov")},
                                     QVariantList{flow->result()->manifestSidecarPath.value()},
                                     QVariantList{at("out")}));
    screen->click(text("export.done.again"));
    EXPECT_TRUE(hasFocus("export.folder.choose")) << "nothing is new";
    EXPECT_EQ(shown("export.count"), text("0 of 3 rows"));
    EXPECT_TRUE(screen->shows(text("export.preview.nothing")));
    screen->key(Qt::Key_Escape);
    EXPECT_TRUE(isGone());
}

TEST_F(ExportViewTest, ARunIsCancelledByTheKeyOnceAndTellsEachRowsFate) {
    for (const char *name : {"a.mov", "b.mov", "c.mov"}) {
        addClip(name, name, name);
    }
    FakeSessions fakes;
    show(fakes);
    folder.write(footage("a.mov"), "changed");
    open();
    screen->click(text("export.mode.1"));
    fakes.halfway = [this](const QString &) {
        const auto work = [this] {
            EXPECT_TRUE(hasFocus("export.running.cancel"));
            EXPECT_EQ(shown("export.running.file"), text("2 of 3: b.mp4"));
            EXPECT_EQ(shown("export.running.figure"), text("33%"));
            screen->click(QPoint(5, 5));
            screen->picture(text("export-running"));
            screen->key(Qt::Key_Escape);
            EXPECT_EQ(shown("export.running.cancel"), text("Force Cancel"));
            EXPECT_EQ(flow->cancelStage(), CancelStage::graceful);
        };
        QMetaObject::invokeMethod(qApp, work, Qt::BlockingQueuedConnection);
    };
    screen->click(text("export.configure.start"));
    EXPECT_TRUE(hasFocus("export.done.done"));
    EXPECT_EQ(shown("export.done.headline"), text("Export cancelled"));
    for (const char *count : {"succeeded", "failed", "cancelled"}) {
        EXPECT_EQ(screen->property(text("export.done.") + text(count), "count"), 1);
    }
    screen->picture(text("export-cancelled"));
    EXPECT_EQ(Screen::accessibleName(screen->item(text("export.done.results.2"))),
              text("c.mp4: Cancelled"));

    QSignalSpy reveals(state.get(), &DeliverySheet::revealWanted);
    screen->item(text("export.done.results.list"))->forceActiveFocus();
    screen->key(Qt::Key_Space);
    EXPECT_THAT(reveals, testing::SizeIs(1));
    screen->key(Qt::Key_Down);
    screen->key(Qt::Key_Space);
    EXPECT_THAT(reveals, testing::SizeIs(1)) << "there is no file of a row that failed";
    screen->key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(text("a.mp4: export source")));
    screen->click(text("export.done.results.1.reason"));
    screen->key(Qt::Key_Return);
    EXPECT_TRUE(isGone());
}

TEST_F(ExportViewTest, ALowWindowScrollsToWhatTabReaches) {
    VideoRecord &film = addClip("A", "x.mov", "x");
    for (int piece = 0; piece < 2000; ++piece) {
        addSubclip(film, QByteArray::number(piece), 0, 1);
    }
    FakeSessions fakes;
    show(fakes, {1280, 800});
    open();
    screen->click(text("export.naming.preset.2"));
    const QQuickItem *choices = screen->item(text("export.configure.choices"));
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
    screen->picture(text("export-configure-1280x800"));
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
    const QQuickItem *list = screen->item(text("export.preview.list"));
    screen->item(text("export.preview.list"))->forceActiveFocus();
    screen->key(Qt::Key_End);
    EXPECT_GT(list->property("contentY").toDouble(), 50000);
    await(store.closeProject());
    EXPECT_TRUE(isGone());
}

} // namespace corvane::test
