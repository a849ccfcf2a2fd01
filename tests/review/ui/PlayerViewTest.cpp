#include "review/PlayerEngine.h"

#include "support/Await.h"
#include "support/screens/Screen.h"
#include "support/TestFolder.h"
#include "support/TestMedia.h"
#include "support/TestPlayer.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

constexpr auto kView = R"(
    import QtQuick
    import Corvane.Review
    PlayerView {
        property var player
        anchors.fill: parent
        engine: player
    })";

/// The frame number in the part of the window that shows a frame of this aspect ratio.
std::optional<int> numberIn(const QImage &window, QSize shape, int quarterTurns) {
    const auto size = shape.scaled(window.size(), Qt::KeepAspectRatio);
    const QPoint from((window.width() - size.width()) / 2, (window.height() - size.height()) / 2);
    return frameNumber(size, quarterTurns, [&](int x, int y) {
        return window.pixelColor(from + QPoint(x, y)).lightnessF();
    });
}

} // namespace

TEST(PlayerViewTest, ShowsEntireFramesOnBlackAndNoFrameOfAMissingFile) {
    const TestFolder folder;
    TestMonotonicClock clock;
    PlayerEngine engine({.clock = &clock});
    Screen screen(kView, {500, 400}, {{QStringLiteral("player"), QVariant::fromValue(&engine)}});
    waitUntilDone(engine.load(makeClip(folder.at("a.mov"), {.frames = 20})));
    EXPECT_TRUE(screen.waitFor([&] { return numberIn(screen.picture(), {320, 180}, 0) == 0; }));
    engine.seek(0.52);
    EXPECT_TRUE(screen.waitFor([&] { return numberIn(screen.picture(), {320, 180}, 0) == 13; }));
    EXPECT_EQ(screen.picture().pixelColor(250, 30), QColor(Qt::black));

    const auto upright = makeClip(folder.at("b.mov"), {.frames = 5, .rotation = 90});
    waitUntilDone(engine.load(upright));
    EXPECT_TRUE(screen.waitFor([&] { return numberIn(screen.picture(), {180, 320}, 1) == 0; }));

    waitUntilDone(engine.load(folder.write("c.mov", "no film")));
    EXPECT_TRUE(
        screen.waitFor([&] { return screen.picture().pixelColor(200, 200) == QColor(Qt::black); }));
}

} // namespace corvane::test
