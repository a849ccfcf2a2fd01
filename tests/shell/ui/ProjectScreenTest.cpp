#include "shell/project/ProjectScreen.h"
#include "../ShellFixture.h"
#include "shell/ProjectHeader.h"
#include "support/screens/Screen.h"

using namespace corvane;
using namespace corvane::test;

namespace {

/// The controls above the review, and an item with the keyboard focus.
constexpr auto kControlsAboveReview = R"(
    import QtQuick
    import Corvane.Project
    import Corvane.Review
    FocusScope {
        id: root
        property var header
        focus: true
        Item {
            objectName: "keys"
            focus: true
        }
        ProjectHeaderBar {
            width: parent.width
            header: root.header
        }
        MediaBannerRow {
            objectName: "banner"
            y: 100
            width: parent.width
            banner: ({ isShown: true, icon: "exclamationmark.triangle", message: "Unknown.",
                       button: "Confirm", disclosure: "Show all 2 paths", paths: ["/a", "/b"],
                       isClosable: true, isAnswering: false, canCancel: false })
        }
    })";

} // namespace

TEST_F(ShellTest, ClicksAboveTheReviewLeaveItTheFocus) {
    const QString file = make("Harbor.corvane", sampleProject(2, 1));
    await(app.store().openProject(file));
    app.store().toggleSelectedForExport(QStringLiteral("clip-0"));
    ProjectPresence presence(app.store());
    ProjectHeader header(app.store(), presence);
    Screen screen(kControlsAboveReview, {1280, 300},
                  {{QStringLiteral("header"), QVariant::fromValue(&header)}});
    for (const char *const name :
         {"header.close", "header.import", "header.export", "header.handoff", "header.help",
          "banner.disclosure.line", "banner.answer", "banner.close"}) {
        screen.click(name);
        EXPECT_EQ(screen.focused()->objectName(), QStringLiteral("keys")) << name;
    }
    EXPECT_TRUE(screen.shows("banner.paths"));
}

TEST_F(ShellTest, TheImportSheetClosesWithItsProject) {
    ProjectScreen screen(app, media::MediaPlayer::Options());
    open(make("Harbor.corvane", sampleProject(1)));
    screen.review()->appear();
    screen.requestImport();
    screen.importing()->sources()->add({folder.path()});
    ASSERT_TRUE(screen.importing()->isOpen());
    open(make("Other.corvane", sampleProject(2)));
    EXPECT_FALSE(screen.importing()->isOpen());
    screen.requestImport();
    EXPECT_TRUE(screen.importing()->isOpen());
    EXPECT_FALSE(screen.importing()->canScan()) << "the sources were cleared";
}

TEST_F(ShellTest, OpensOneSheetAtATimeAndADeliveryOnlyWithSelects) {
    ProjectScreen screen(app, media::MediaPlayer::Options());
    open(make("Harbor.corvane", sampleProject(1)));
    screen.requestExport();
    screen.requestHandoff();
    EXPECT_FALSE(screen.exporting()->isOpen() || screen.handoff()->isOpen());
    app.store().toggleSelectedForExport(QStringLiteral("clip-0"));
    screen.requestExport();
    screen.requestImport();
    screen.requestHandoff();
    EXPECT_TRUE(screen.exporting()->isOpen() && !screen.importing()->isOpen() &&
                !screen.handoff()->isOpen());
    screen.exporting()->dismiss();
    screen.requestImport();
    EXPECT_TRUE(screen.importing()->isOpen() && !screen.exporting()->isOpen());
}

TEST_F(ShellTest, ANewProjectStartsWithTheImportOnceTheOpenSheetIsClosed) {
    ProjectScreen screen(app, media::MediaPlayer::Options());
    open(make(QStringLiteral("Harbor.corvane"), sampleProject(1)));
    screen.review()->appear();
    app.store().toggleSelectedForExport(QStringLiteral("clip-0"));
    screen.requestExport();
    QEventLoop loop;
    QObject::connect(screen.exporting(), &DeliverySheet::resultChanged, &loop, &QEventLoop::quit);
    screen.exporting()->start();
    loop.exec();
    const QString file = folder.at(QStringLiteral("Other.corvane"));
    await(app.store().createProject({.name = QStringLiteral("Other")}, file));
    ASSERT_TRUE(screen.exporting()->isOpen()) << "the results";
    EXPECT_FALSE(screen.importing()->isOpen());
    screen.exporting()->dismiss();
    EXPECT_TRUE(screen.importing()->isOpen());
    screen.importing()->dismiss();
    EXPECT_FALSE(screen.importing()->isOpen());
}
