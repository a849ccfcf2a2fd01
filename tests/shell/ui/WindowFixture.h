#pragma once

#include "../ShellFixture.h"
#include "shell/project/ProjectScreen.h"
#include "support/screens/Screen.h"
#include "support/TestMedia.h"

#include <QDragEnterEvent>
#include <QMimeData>

namespace corvane::test {

/// The program in its window, without sound, which not every machine has. What `time` plays by must
/// outlive the test.
class WindowTest : public ShellTest {
  protected:
    /// Of a clip's pictures, small so that they are quick to make.
    static constexpr QSize kShape{64, 48};

    using Bound = std::chrono::milliseconds;
    /// Of what the machine works at: media are read, copied and encoded meanwhile.
    static constexpr Bound kWork = std::chrono::minutes(3);

    explicit WindowTest(media::TimeSource &time = media::TimeSource::system())
        : ShellTest([&time](CorvaneApp &app) {
              return std::make_unique<ProjectScreen>(app,
                                                     media::MediaPlayer::Options{.time = &time});
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

    std::optional<Screen> screen;
};

} // namespace corvane::test
