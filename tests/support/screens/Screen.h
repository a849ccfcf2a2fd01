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

/// Screens under test: opened without a display, worked as a person would, and looked at.
namespace corvane::test {

/// A window with a screen in it. Every call reports a GoogleTest failure, naming what it looked
/// for, when it can't do what it was asked; none waits longer than a few seconds unless it is told
/// to. What the engine warns about while the screen lives is a failure too. Main thread.
class Screen {
  public:
    static constexpr std::chrono::milliseconds kLongestWait{5000};

    /// Loads QML text as if it stood in a file of its own, with these initial properties. Its root
    /// is a window, or an item that gets a window of `size`.
    explicit Screen(const QByteArray &qml, QSize size = {1280, 800},
                    const QVariantMap &properties = {});
    ~Screen();
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    [[nodiscard]] QQuickWindow *window() const { return m_window; }
    [[nodiscard]] QQmlEngine &engine() { return m_engine; }

    /// The object that the QML text made: the window, or the item in it.
    [[nodiscard]] QObject *root() const { return m_root.get(); }

    /// The visible item of that objectName, popups included; null and a failure without one.
    [[nodiscard]] QQuickItem *item(const QString &name) const;

    /// Whether a visible item of that objectName is there.
    [[nodiscard]] bool shows(const QString &name) const;

    /// A click in the middle of an item, and in the middle of nowhere in particular.
    void click(const QString &name, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               Qt::MouseButton button = Qt::LeftButton);
    void click(QPoint point, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               Qt::MouseButton button = Qt::LeftButton);
    void doubleClick(const QString &name);

    /// Moves the pointer to the middle of an item.
    void hover(const QString &name);

    /// Presses at one point, moves to the other and lets go there.
    void drag(QPoint from, QPoint to);

    /// Text and keys for whatever has the focus.
    void type(const QString &text);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses a key and holds it until it has come a few times.
    void hold(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// Runs the event loop until the condition holds, and says whether it came to hold in time.
    /// What is slow by its nature, as work on media is, is given longer.
    [[nodiscard]] bool waitFor(const std::function<bool()> &condition,
                               std::chrono::milliseconds longest = kLongestWait) const;

    [[nodiscard]] QVariant property(const QString &name, const char *property) const;

    /// The item that has the keyboard's focus, null if none has.
    [[nodiscard]] QQuickItem *focused() const;

    /// What a reader of the screen is told of an item.
    [[nodiscard]] static QString accessibleName(QQuickItem *item);
    [[nodiscard]] static int accessibleRole(QQuickItem *item);

    /// All visible items below the window, the window's own first.
    [[nodiscard]] QList<QQuickItem *> visibleItems() const;

    /// The window as it looks now; with CORVANE_PICTURES set to a folder it is also written there
    /// as <name>.png.
    QImage picture(const QString &name = {});

  private:
    [[nodiscard]] QPoint middle(const QQuickItem *item) const;

    QQmlEngine m_engine;
    QStringList m_warnings;
    std::unique_ptr<QObject> m_root;
    std::unique_ptr<QQuickWindow> m_ownWindow;
    QPointer<QQuickWindow> m_window;
};

} // namespace corvane::test
