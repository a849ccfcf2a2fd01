// Runs in the window during which the user opens another project or closes the window.

#include "WindowFixture.h"

#include "import/ImportSheetFixture.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>

using namespace corvane;
using namespace corvane::test;

namespace {

class InterruptedRunTest : public WindowTest {
  protected:
    InterruptedRunTest() { show(); }

    /// Makes clips in the folder "card".
    void clips(std::initializer_list<const char *> names) {
        for (const char *const name : names) {
            makeClip(card + QLatin1Char('/') + utf8(name), {.size = kFrameSize, .frames = 10});
        }
    }
    void selectAll() {
        QStringList ids;
        for (const VideoItem &video : videos()) {
            ids.append(video->id);
        }
        app.store().selectClips(ids);
    }
    /// Closes the window and runs the event loop until the application quits.
    void closeAndQuit(BlockedCopy &blocked) {
        QGuiApplication::setQuitOnLastWindowClosed(false); // as the application does
        QTimer::singleShot(0, qApp, [&] {
            screen->window()->close();
            blocked.resume();
        });
        QTimer timeout;
        timeout.callOnTimeout([] { QCoreApplication::exit(1); });
        timeout.start(kMediaTimeout);
        EXPECT_EQ(QGuiApplication::exec(), 0);
        EXPECT_FALSE(projectScreen().isRunning());
        EXPECT_EQ(folder.temporaries(), QStringList());
    }
    /// Expects each clip in a folder to be identical to the card's clip of the same name.
    void expectCompleteFiles(const char *folderName) {
        const QDir directory(folder.at(folderName));
        for (const QString &name : directory.entryList({utf8("*.mov")}, QDir::Files)) {
            EXPECT_EQ(folder.read(utf8(folderName) + QLatin1Char('/') + name),
                      folder.read(utf8("card/") + name))
                << name.toStdString();
        }
    }
    QString out() const { return folder.folder("out"); }
};

} // namespace

TEST_F(InterruptedRunTest, ImportsDroppedFootageAndOpensADroppedProjectAfterTheRun) {
    clips({"a.mov", "b.mov"});
    const QString other = make("Other.corvane", sampleProject(1));
    const QString third = make("Third.corvane", sampleProject(1));
    createProject();
    leaveSheet();
    ASSERT_TRUE(reviewGetsFocus());
    drop(card);
    ASSERT_TRUE(appears("import.source.0"));
    click("import.scan");
    ASSERT_TRUE(appears("import.begin", kMediaTimeout));
    click("import.mode.1");
    BlockedCopy blocked(utf8("b.mov"));
    click("import.begin");
    ASSERT_TRUE(appears("import.running.cancel"));
    ASSERT_TRUE(screen->waitFor([&] { return text("import.running.figure") == utf8("2 / 2"); }));
    app.router()->open(other);
    drop(third);
    QCoreApplication::processEvents();
    EXPECT_EQ(app.store().project()->name, utf8("Tide"));
    const QString file = *app.store().fileURL();
    blocked.resume();
    ASSERT_TRUE(screen->waitFor([&] { return app.store().fileURL() == third; }, kMediaTimeout));
    EXPECT_EQ(ProjectFileIO::loadNow(file).videos.size(), 2);
    EXPECT_TRUE(appears("clip-clip-0"));
    finishImport(); // the result sheet still appears
}

TEST_F(InterruptedRunTest, ClosingTheWindowDuringAnImportLeavesCompleteFilesAndASavedProject) {
    clips({"a.mov", "b.mov", "c.mov"});
    createProject();
    scan();
    {
        BlockedCopy blocked(utf8("b.mov"));
        click("import.begin");
        ASSERT_TRUE(screen->waitFor([&] {
            return shows("import.running.figure") && text("import.running.figure") == utf8("2 / 3");
        }));
        closeAndQuit(blocked);
    }
    const Project saved = ProjectFileIO::loadNow(*app.store().fileURL());
    EXPECT_EQ(saved.videos.size(), folder.names("shoot/media").size());
    EXPECT_GE(saved.videos.size(), 1);
    EXPECT_LT(saved.videos.size(), 3);
    expectCompleteFiles("shoot/media");
}

TEST_F(InterruptedRunTest, ClosingTheWindowDuringAnExportLeavesCompleteFilesAndAManifest) {
    clips({"a.mov", "b.mov", "c.mov"});
    createProject();
    importCard();
    selectAll();
    configure("export", out());
    ASSERT_TRUE(screen->waitFor([&] { return projectScreen().exporting()->canStart(); }));
    const QString second = projectScreen().exporting()->rows()->rows().at(1).name;
    {
        BlockedCopy blocked(second);
        click("export.configure.start");
        ASSERT_TRUE(screen->waitFor(
            [&] { return projectScreen().exporting()->run().line.startsWith(utf8("2 of 3")); },
            kMediaTimeout));
        closeAndQuit(blocked);
    }
    expectCompleteFiles("out");
    const QStringList names = folder.names("out");
    ASSERT_EQ(names.filter(utf8(".json")).size(), 1);
    const QByteArray manifest = folder.read(utf8("out/") + names.filter(utf8(".json")).first());
    EXPECT_EQ(manifest.count(R"("status": "succeeded")"), names.size() - 1);
    EXPECT_EQ(manifest.count(R"("status": "cancelled")"), 4 - names.size());
    EXPECT_LT(names.size(), 4);
}
