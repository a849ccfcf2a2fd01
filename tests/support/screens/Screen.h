#pragma once

#include <QImage>
#include <QPointer>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QVariantMap>

#include <chrono>
#include <functional>
#include <memory>

namespace corvane::test {

/// A window with QML under test, without a display. Simulates user input and inspects items. A
/// missing item adds a GoogleTest failure, and so does a warning of the QML engine. Main thread.
class Screen {
  public:
    static constexpr std::chrono::milliseconds kTimeout{5000};

    /// Loads QML source with initial properties. Its root is a window, or an item, which is put
    /// into a window of `size`.
    explicit Screen(const QByteArray &qml, QSize size = {1280, 800},
                    const QVariantMap &properties = {});
    ~Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    [[nodiscard]] QQuickWindow *window() const { return m_window; }
    [[nodiscard]] QQmlEngine &engine() { return m_engine; }

    /// The root object of the QML source: the window, or the item in it.
    [[nodiscard]] QObject *root() const { return m_root.get(); }

    /// The visible item with an objectName, in popups too. Adds a failure and returns nullptr if
    /// there is none.
    [[nodiscard]] QQuickItem *item(QAnyStringView name) const;

    /// True if there is a visible item with this objectName.
    [[nodiscard]] bool shows(QAnyStringView name) const;

    /// Clicks the center of an item, or a point in the window.
    void click(QAnyStringView name, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               Qt::MouseButton button = Qt::LeftButton);
    void click(QPoint point, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               Qt::MouseButton button = Qt::LeftButton);

    /// Moves the pointer to the center of an item.
    void hover(QAnyStringView name);

    /// Presses at `from`, moves to `to` and releases.
    void drag(QPoint from, QPoint to);
    /// Drops URLs from another application at the center of the window.
    void drop(const QList<QUrl> &urls);

    /// Sends text or a key to the focused item.
    void type(QAnyStringView text);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses a key and holds it for a few auto-repeats.
    void hold(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Runs the event loop until the condition holds. Returns false after `timeout`.
    [[nodiscard]] bool waitFor(const std::function<bool()> &condition,
                               std::chrono::milliseconds timeout = kTimeout) const;

    [[nodiscard]] QVariant property(QAnyStringView name, const char *property) const;
    /// The text of an item.
    [[nodiscard]] QString textOf(QAnyStringView name) const {
        return property(name, "text").toString();
    }

    /// The item with the keyboard focus, or nullptr.
    [[nodiscard]] QQuickItem *focused() const;

    /// An item's name and role for assistive technology.
    [[nodiscard]] static QString accessibleName(QQuickItem *item);
    [[nodiscard]] static int accessibleRole(QQuickItem *item);

    /// All visible items of the window in depth-first order.
    [[nodiscard]] QList<QQuickItem *> visibleItems() const;

    /// A screenshot of the window. Also saves it as <name>.png in the folder that the environment
    /// variable CORVANE_PICTURES names, if it is set.
    QImage picture(QAnyStringView name = {});

  private:
    [[nodiscard]] QPoint center(const QQuickItem *item) const;

    QQmlEngine m_engine;
    QStringList m_warnings;
    std::unique_ptr<QObject> m_root;
    std::unique_ptr<QQuickWindow> m_ownWindow;
    QPointer<QQuickWindow> m_window;
};

} // namespace corvane::test
