#pragma once

#include "../ShellFixture.h"
#include "shell/project/ProjectScreen.h"
#include "support/screens/Screen.h"
#include "support/TestMedia.h"

namespace corvane::test {

inline QString utf8(const char *text) {
    return QString::fromUtf8(text);
}

/// The application in its main window. Plays without audio, because a machine may lack a device.
/// `playerClock` drives playback and must outlive the test.
class WindowTest : public ShellTest {
  protected:
    /// Small, so that clips are quick to encode.
    static constexpr QSize kFrameSize{64, 48};

    /// For waits during which media are read, copied or encoded.
    static constexpr std::chrono::milliseconds kMediaTimeout = std::chrono::minutes(3);

    explicit WindowTest(media::MonotonicClock &playerClock = media::MonotonicClock::system())
        : ShellTest([&playerClock](CorvaneApp &app) {
              return std::make_unique<ProjectScreen>(
                  app, media::MediaPlayer::Options{.clock = &playerClock});
          }) {}

    void show() {
        screen.emplace("import Corvane.Shell\nMainWindow {}", QSize(1280, 800),
                       QVariantMap{{QStringLiteral("app"), QVariant::fromValue(&app)}});
    }
    ProjectScreen &projectScreen() { return dynamic_cast<ProjectScreen &>(*app.projectScreen()); }
    ReviewScreenState &review() { return *projectScreen().review(); }
    PlayerEngine &engine() { return *projectScreen().engine(); }

    bool shows(const char *name) const { return screen->shows(name); }
    /// Clicks an item once no sheet or menu is opening or closing.
    void click(const char *name, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        EXPECT_TRUE(popupsSettle());
        screen->click(name, modifiers);
    }
    /// Waits until no sheet, alert or menu is opening or closing.
    bool popupsSettle() {
        return screen->waitFor([&] {
            return std::ranges::none_of(
                screen->root()->findChildren<QObject *>(), [](const QObject *object) {
                    return object->inherits("QQuickPopup") &&
                           object->property("visible") != object->property("opened");
                });
        });
    }
    bool appears(const char *name, std::chrono::milliseconds timeout = Screen::kTimeout) {
        return screen->waitFor([&] { return shows(name); }, timeout);
    }
    bool disappears(const char *name) {
        return screen->waitFor([&] { return !shows(name); });
    }
    QString text(const char *name) { return screen->textOf(name); }
    bool hasFocus(const char *name) const { return screen->property(name, "activeFocus").toBool(); }
    /// Waits until the review receives key presses.
    bool reviewGetsFocus() {
        return screen->waitFor([&] { return hasFocus("project.keys"); });
    }
    /// Closes the sheet of an import, export or handoff, if one is open.
    void leaveSheet() {
        const auto isOpen = [this] {
            return shows("import.cancel") || shows("export.configure.cancel") ||
                   shows("handoff.configure.cancel");
        };
        if (isOpen()) {
            screen->key(Qt::Key_Escape);
            EXPECT_TRUE(screen->waitFor([&] { return !isOpen(); }));
        }
    }
    /// Creates a project from the home screen, which opens the import sheet.
    void createProject() {
        click("home.newProject");
        ASSERT_TRUE(appears("setup.projectName"));
        screen->type("Tide");
        panels.answer = folder.at("shoot");
        click("setup.create");
        ASSERT_TRUE(appears("import.chooseFolder"));
    }
    /// Scans the card in the import sheet and selects copying.
    void scan() {
        panels.answer = card;
        click("import.chooseFolder");
        click("import.scan");
        ASSERT_TRUE(appears("import.begin", kMediaTimeout));
        click("import.mode.1");
    }
    void finishImport() {
        ASSERT_TRUE(appears("import.finish", kMediaTimeout));
        click("import.finish");
        ASSERT_TRUE(reviewGetsFocus());
    }
    void importCard() {
        scan();
        click("import.begin");
        finishImport();
    }
    /// Opens the sheet of `flow` ("export" or "handoff") and chooses the destination folder.
    void configure(const std::string &flow, const QString &destination) {
        const bool isExport = flow == "export";
        delivery = isExport ? static_cast<DeliverySheet *>(projectScreen().exporting())
                            : projectScreen().handoff();
        screen->key(Qt::Key_E,
                    isExport ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_TRUE(appears((flow + ".folder.choose").c_str()));
        panels.answer = destination;
        click((flow + ".folder.choose").c_str());
        EXPECT_TRUE(screen->waitFor([&] { return delivery->folder() == destination; }));
    }
    /// Starts the configured run and closes its result sheet. Returns the headline and one line per
    /// row.
    std::string deliver(const std::string &flow) {
        const std::string start = flow + ".configure.start";
        EXPECT_TRUE(screen->waitFor([&] { return delivery->canStart(); }));
        click(start.c_str());
        EXPECT_TRUE(disappears(start.c_str()) &&
                    appears((flow + ".done.done").c_str(), kMediaTimeout));
        QStringList lines{delivery->result().headline};
        for (const DeliveryResult &row : delivery->results()->rows()) {
            lines.append(row.name + (row.error.isEmpty() ? QString() : utf8(": ") + row.error));
        }
        EXPECT_TRUE(popupsSettle());
        screen->picture(utf8(flow.c_str()) + utf8("-in-window"));
        click((flow + ".done.done").c_str());
        EXPECT_TRUE(reviewGetsFocus());
        return lines.join(QLatin1Char('\n')).remove(folder.path()).toStdString();
    }
    const QList<VideoItem> &videos() { return app.store().project()->videos; }
    void drop(const QString &path) { screen->drop({QUrl::fromLocalFile(path)}); }
    /// The number encoded in the frame that the player displays; -1 if it displays no such frame.
    int displayedFrame() {
        const QQuickItem *const item = screen->item("picture");
        const QImage image =
            screen->picture().copy(item->mapRectToScene({QPointF(0, 0), item->size()}).toRect());
        const QSize size = kFrameSize.scaled(image.size(), Qt::KeepAspectRatio);
        const QPoint from((image.width() - size.width()) / 2, (image.height() - size.height()) / 2);
        const auto number = frameNumber(size, 0, [&](int x, int y) {
            return image.pixelColor(from + QPoint(x, y)).lightnessF();
        });
        return number.value_or(-1);
    }

    QString card = folder.folder("card"); ///< source footage
    std::optional<Screen> screen;
    DeliverySheet *delivery = nullptr; ///< the flow of the last `configure`
};

} // namespace corvane::test
