#include "support/screens/Screen.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QDeadlineTimer>
#include <QDir>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QQmlComponent>
#include <QTest>

namespace corvane::test {

namespace {

void collectVisible(QQuickItem *item, QList<QQuickItem *> &items) {
    if (!item->isVisible()) {
        return;
    }
    items.append(item);
    for (QQuickItem *child : item->childItems()) {
        collectVisible(child, items);
    }
}

std::string errorText(const QQmlComponent &component) {
    return component.errorString().toStdString();
}

} // namespace

Screen::Screen(const QByteArray &qml, QSize size, const QVariantMap &properties) {
    QObject::connect(&m_engine, &QQmlEngine::warnings, &m_engine,
                     [this](const QList<QQmlError> &warnings) {
                         for (const QQmlError &warning : warnings) {
                             m_warnings.append(warning.toString());
                         }
                     });
    QQmlComponent component(&m_engine);
    component.setData(qml, QUrl(QStringLiteral("qrc:/screen-under-test.qml")));
    // Creating an object of a component with errors crashes the engine.
    if (component.isReady()) {
        m_root.reset(component.createWithInitialProperties(properties));
    }
    if (!m_root) {
        ADD_FAILURE() << "the screen doesn't load: " << errorText(component);
        m_root = std::make_unique<QQuickItem>();
    }
    m_window = qobject_cast<QQuickWindow *>(m_root.get());
    if (!m_window) {
        m_ownWindow = std::make_unique<QQuickWindow>();
        m_window = m_ownWindow.get();
        auto *item = qobject_cast<QQuickItem *>(m_root.get());
        item->setParentItem(m_window->contentItem());
        item->setSize(size);
    }
    m_window->resize(size);
    m_window->show();
    m_window->requestActivate();
    EXPECT_TRUE(waitFor([this] { return m_window->isExposed() && m_window->isActive(); }))
        << "the window doesn't open";
}

Screen::~Screen() {
    EXPECT_TRUE(m_warnings.isEmpty()) << m_warnings.join(QLatin1Char('\n')).toStdString();
}

QList<QQuickItem *> Screen::visibleItems() const {
    QList<QQuickItem *> items;
    collectVisible(m_window->contentItem(), items);
    return items;
}

bool Screen::shows(QAnyStringView name) const {
    const QList<QQuickItem *> items = visibleItems();
    return std::any_of(items.begin(), items.end(),
                       [name](const QQuickItem *item) { return item->objectName() == name; });
}

QQuickItem *Screen::item(QAnyStringView name) const {
    for (QQuickItem *item : visibleItems()) {
        if (item->objectName() == name) {
            return item;
        }
    }
    QStringList present;
    for (const QQuickItem *item : visibleItems()) {
        if (!item->objectName().isEmpty()) {
            present.append(item->objectName());
        }
    }
    ADD_FAILURE() << "no visible item is named \"" << name.toString().toStdString() << "\", only "
                  << present.join(QStringLiteral(", ")).toStdString();
    return nullptr;
}

QPoint Screen::center(const QQuickItem *item) const {
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

void Screen::click(QAnyStringView name, Qt::KeyboardModifiers modifiers, Qt::MouseButton button) {
    if (const QQuickItem *target = item(name)) {
        click(center(target), modifiers, button);
    }
}

void Screen::click(QPoint point, Qt::KeyboardModifiers modifiers, Qt::MouseButton button) {
    QTest::mouseClick(m_window, button, modifiers, point);
    QCoreApplication::processEvents();
}

void Screen::hover(QAnyStringView name) {
    if (const QQuickItem *target = item(name)) {
        QTest::mouseMove(m_window, center(target));
        QCoreApplication::processEvents();
    }
}

void Screen::drag(QPoint from, QPoint to) {
    QTest::mousePress(m_window, Qt::LeftButton, Qt::NoModifier, from);
    // Two moves, because the first only exceeds the drag threshold.
    QTest::mouseMove(m_window, from + (to - from) / 2);
    QTest::mouseMove(m_window, to);
    QTest::mouseRelease(m_window, Qt::LeftButton, Qt::NoModifier, to);
    QCoreApplication::processEvents();
}

void Screen::drop(const QList<QUrl> &urls) {
    QMimeData data;
    data.setUrls(urls);
    const QPoint center = QRect(QPoint(), m_window->size()).center();
    QDragEnterEvent enter(center, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window, &enter);
    QDropEvent dropped(center, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_window, &dropped);
}

void Screen::type(QAnyStringView text) {
    for (const QChar letter : text.toString()) {
        QTest::sendKeyEvent(QTest::Click, m_window, Qt::Key_unknown, QString(letter),
                            Qt::NoModifier);
    }
    QCoreApplication::processEvents();
}

void Screen::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(m_window, key, modifiers);
    QCoreApplication::processEvents();
}

void Screen::hold(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    constexpr int kRepeats = 4;
    for (int repeat = 0; repeat < kRepeats; ++repeat) {
        QTest::simulateEvent(m_window, true, key, modifiers, {}, repeat > 0);
        QCoreApplication::processEvents();
    }
    QTest::keyRelease(m_window, key, modifiers);
    QCoreApplication::processEvents();
}

bool Screen::waitFor(const std::function<bool()> &condition,
                     std::chrono::milliseconds timeout) const {
    const QDeadlineTimer deadline(timeout);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
    return true;
}

QVariant Screen::property(QAnyStringView name, const char *property) const {
    const QQuickItem *target = item(name);
    return target ? target->property(property) : QVariant();
}

QQuickItem *Screen::focused() const {
    return m_window->activeFocusItem();
}

QString Screen::accessibleName(QQuickItem *item) {
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

int Screen::accessibleRole(QQuickItem *item) {
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
    return interface ? interface->role() : QAccessible::NoRole;
}

QImage Screen::picture(QAnyStringView name) {
    const QImage image = m_window->grabWindow();
    const QString folder = qEnvironmentVariable("CORVANE_PICTURES");
    if (!name.isEmpty() && !folder.isEmpty()) {
        QDir().mkpath(folder);
        EXPECT_TRUE(
            image.save(folder + QLatin1Char('/') + name.toString() + QStringLiteral(".png")));
    }
    return image;
}

} // namespace corvane::test
