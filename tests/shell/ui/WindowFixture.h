#pragma once

#include "../ShellFixture.h"
#include "shell/project/ProjectScreen.h"
#include "support/screens/Screen.h"
#include "support/TestMedia.h"

#include <QDragEnterEvent>
#include <QMimeData>

namespace corvane::test {

inline QString utf8(const char *text) {
    return QString::fromUtf8(text);
}

/// The program in its window, without audio, which not every machine has. `playerClock` must
/// outlive the test.
class WindowTest : public ShellTest {
  protected:
    /// Of a clip's pictures, small so that they are quick to make.
    static constexpr QSize kShape{64, 48};

    using Bound = std::chrono::milliseconds;
    /// Of what the machine works at: media are read, copied and encoded meanwhile.
    static constexpr Bound kWork = std::chrono::minutes(3);

    explicit WindowTest(media::MonotonicClock &playerClock = media::MonotonicClock::system())
        : ShellTest([&playerClock](CorvaneApp &app) {
              return std::make_unique<ProjectScreen>(
                  app, media::MediaPlayer::Options{.clock = &playerClock});
          }) {}

    void show() {
        screen.emplace("import Corvane.Shell\nMainWindow {}", QSize(1280, 800),
                       QVariantMap{{QStringLiteral("app"), QVariant::fromValue(&app)}});
    }
    /// Of the project that is open in the window.
    ProjectScreen &bound() { return dynamic_cast<ProjectScreen &>(*app.projectScreen()); }
    ReviewScreenState &review() { return *bound().review(); }
    PlayerEngine &engine() { return *bound().engine(); }

    bool shows(const char *name) const { return screen->shows(QString::fromUtf8(name)); }
    /// Once no sheet or menu is on its way.
    void click(const char *name, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        EXPECT_TRUE(settles());
        screen->click(QString::fromUtf8(name), modifiers);
    }
    /// Waits until every sheet, alert and menu has come or gone.
    bool settles() {
        return screen->waitFor([&] {
            return std::ranges::none_of(
                screen->root()->findChildren<QObject *>(), [](const QObject *object) {
                    return object->inherits("QQuickPopup") &&
                           object->property("visible") != object->property("opened");
                });
        });
    }
    bool comes(const char *name, Bound longest = Screen::kLongestWait) {
        return screen->waitFor([&] { return shows(name); }, longest);
    }
    bool goes(const char *name) {
        return screen->waitFor([&] { return !shows(name); });
    }
    QString text(const char *name) {
        return screen->property(QString::fromUtf8(name), "text").toString();
    }
    bool hasFocus(const char *name) const {
        return screen->property(QString::fromUtf8(name), "activeFocus").toBool();
    }
    /// Waits until the keys are the review's.
    bool keysAreBack() {
        return screen->waitFor([&] { return hasFocus("project.keys"); });
    }
    /// Esc on a flow's first stage, if a sheet is up; it keeps every other key from the window.
    void leaveSheet() {
        const auto isUp = [this] {
            return shows("import.cancel") || shows("export.configure.cancel") ||
                   shows("handoff.configure.cancel");
        };
        if (isUp()) {
            screen->key(Qt::Key_Escape);
            EXPECT_TRUE(screen->waitFor([&] { return !isUp(); }));
        }
    }
    /// From the home screen to the import's sheet, which comes by itself.
    void createProject() {
        click("home.newProject");
        ASSERT_TRUE(comes("setup.projectName"));
        screen->type(utf8("Tide"));
        panels.answer = folder.at(utf8("shoot"));
        click("setup.create");
        ASSERT_TRUE(comes("import.chooseFolder"));
    }
    /// From the sheet's first stage to what is found on the card, which is to be copied.
    void scan() {
        panels.answer = card;
        click("import.chooseFolder");
        click("import.scan");
        ASSERT_TRUE(comes("import.begin", kWork));
        click("import.mode.1");
    }
    void finishImport() {
        ASSERT_TRUE(comes("import.finish", kWork));
        click("import.finish");
        ASSERT_TRUE(keysAreBack());
    }
    void importCard() {
        scan();
        click("import.begin");
        finishImport();
    }
    /// Brings the sheet of "export" or "handoff" up, with a folder to deliver into.
    void configure(const std::string &flow, const QString &into) {
        const bool isExport = flow == "export";
        delivery =
            isExport ? static_cast<DeliveryScreenState *>(bound().exporting()) : bound().handoff();
        screen->key(Qt::Key_E,
                    isExport ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
        ASSERT_TRUE(comes((flow + ".folder.choose").c_str()));
        panels.answer = into;
        click((flow + ".folder.choose").c_str());
    }
    /// Runs it, gives what it tells, a line for each row, and leaves the sheet.
    std::string deliver(const std::string &flow) {
        const std::string start = flow + ".configure.start";
        EXPECT_TRUE(screen->waitFor([&] { return delivery->canStart(); }));
        click(start.c_str());
        EXPECT_TRUE(goes(start.c_str()) && comes((flow + ".done.done").c_str(), kWork));
        QStringList told{delivery->headline()};
        if (!delivery->errorLine().isEmpty()) {
            told.append(delivery->errorLine());
        }
        for (const DeliveryResult &row : delivery->results()->rows()) {
            told.append(row.name + (row.error.isEmpty() ? QString() : utf8(": ") + row.error));
        }
        EXPECT_TRUE(settles());
        screen->picture(utf8(flow.c_str()) + utf8("-in-window"));
        click((flow + ".done.done").c_str());
        EXPECT_TRUE(keysAreBack());
        return told.join(QLatin1Char('\n')).remove(folder.path()).toStdString();
    }
    const QList<VideoItem> &videos() { return app.store().project()->videos; }
    void drop(const QString &path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({400, 400}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(screen->window(), &enter);
        QDropEvent dropped({400, 400}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(screen->window(), &dropped);
    }
    /// The number that the picture in the player carries; -1 for none.
    int shownFrame() {
        const QQuickItem *const item = screen->item(QStringLiteral("picture"));
        const QImage seen =
            screen->picture().copy(item->mapRectToScene({QPointF(0, 0), item->size()}).toRect());
        const QSize size = kShape.scaled(seen.size(), Qt::KeepAspectRatio);
        const QPoint from((seen.width() - size.width()) / 2, (seen.height() - size.height()) / 2);
        const auto number = frameNumber(size, 0, [&](int x, int y) {
            return seen.pixelColor(from + QPoint(x, y)).lightnessF();
        });
        return number.value_or(-1);
    }

    QString card = folder.folder(utf8("card")); ///< of footage
    std::optional<Screen> screen;
    DeliveryScreenState *delivery = nullptr; ///< whose sheet was brought up last
};

} // namespace corvane::test
