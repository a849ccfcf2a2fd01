#include "support/screens/Screen.h"

#include <gtest/gtest.h>

namespace corvane::test {
namespace {

TEST(ControlsTest, ADisabledButtonDoesNothingAndStillSaysWhy) {
    Screen screen(R"(
        import QtQuick
        import Corvane.Kit
        AppWindow {
            property int clicks: 0
            Button {
                objectName: "export"; x: 40; y: 40; text: "Export"; enabled: false
                helpText: "Mark clips first"
                onClicked: clicks += 1
            }
        })");
    screen.hover(QStringLiteral("export"));
    EXPECT_TRUE(screen.waitFor([&] { return screen.shows(QStringLiteral("helpTip")); }));
    EXPECT_EQ(Screen::accessibleName(screen.item(QStringLiteral("helpTip"))),
              QStringLiteral("Mark clips first"));
    screen.click(QStringLiteral("export"));
    EXPECT_EQ(screen.root()->property("clicks").toInt(), 0);
}

} // namespace
} // namespace corvane::test
