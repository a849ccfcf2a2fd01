#include "shell/SleepInhibitor.h"

#include "platform/SerialExecutor.h"
#include "platform/Tasks.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>

#include <optional>

namespace corvane {

namespace {

const char kScreenSaver[] = "org.freedesktop.ScreenSaver";

QDBusMessage loginManagerCall(const QString &why) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:idle") << QStringLiteral("Corvane") << why
         << QStringLiteral("block");
    return call;
}

QDBusMessage screenSaverCall(const char *method) {
    const QString name = QLatin1String(kScreenSaver);
    return QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/ScreenSaver"),
                                          name, QLatin1String(method));
}

SerialExecutor &connectingExecutor() {
    return sharedExecutor("buses", SerialExecutor::Priority::Utility);
}

} // namespace

/// Requests an inhibition, holds it and releases it. Outlives its inhibitor until the response
/// arrives, because only the response identifies the inhibition.
class SleepInhibitor::Inhibition : public QObject {
  public:
    Inhibition(QString why, Buses buses) : m_why(std::move(why)), m_buses(std::move(buses)) {}

    bool isHeld() const { return m_lock.isValid() || m_cookie; }
    bool isSettled() const { return m_isSettled; }

    QCoro::Task<> requestFromLoginManager() {
        const QDBusConnection bus = co_await connectingExecutor().run(m_buses.system);
        if (m_isReleased) {
            settle();
            co_return;
        }
        send(bus, loginManagerCall(m_why), [this](const QDBusPendingCall &call) {
            const QDBusPendingReply<QDBusUnixFileDescriptor> reply = call;
            if (reply.isValid() && reply.value().isValid()) {
                m_lock = reply.value();
                settle();
            } else {
                detach(requestFromScreenSaver());
            }
        });
    }

    void release() {
        m_isReleased = true;
        if (m_isSettled) {
            releaseInhibition();
            delete this;
        }
    }

  private:
    QCoro::Task<> requestFromScreenSaver() {
        if (!m_isReleased) {
            m_session = co_await connectingExecutor().run(m_buses.session);
        }
        if (m_isReleased) {
            settle();
            co_return;
        }
        QDBusMessage message = screenSaverCall("Inhibit");
        message << QStringLiteral("Corvane") << m_why;
        send(*m_session, message, [this](const QDBusPendingCall &call) {
            const QDBusPendingReply<uint> reply = call;
            if (reply.isValid()) {
                m_cookie = reply.value();
            }
            settle();
        });
    }

    /// Fails at once if the bus is not connected, because its calls would never finish.
    void send(const QDBusConnection &bus, const QDBusMessage &message,
              std::function<void(const QDBusPendingCall &)> onReply) {
        if (!bus.isConnected()) {
            onReply(QDBusPendingCall::fromError(bus.lastError()));
            return;
        }
        auto *const watcher = new QDBusPendingCallWatcher(bus.asyncCall(message), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this,
                [watcher, onReply = std::move(onReply)] {
                    watcher->deleteLater();
                    onReply(*watcher);
                });
    }

    /// No further request follows.
    void settle() {
        m_isSettled = true;
        if (m_isReleased) {
            releaseInhibition();
            deleteLater();
        }
    }

    /// The login manager's lock is held as long as the descriptor is open.
    void releaseInhibition() {
        m_lock = QDBusUnixFileDescriptor();
        if (m_cookie) {
            QDBusMessage message = screenSaverCall("UnInhibit");
            message << *m_cookie;
            m_session->send(message);
            m_cookie.reset();
        }
    }

    QString m_why;
    Buses m_buses;
    bool m_isReleased = false;
    bool m_isSettled = false;
    QDBusUnixFileDescriptor m_lock;
    std::optional<QDBusConnection> m_session;
    std::optional<uint> m_cookie;
};

SleepInhibitor::SleepInhibitor(const QString &why)
    : SleepInhibitor(why, {&QDBusConnection::systemBus, &QDBusConnection::sessionBus}) {}

SleepInhibitor::SleepInhibitor(const QString &why, Buses buses)
    : m_inhibition(new Inhibition(why, std::move(buses))) {
    detach(m_inhibition->requestFromLoginManager());
}

SleepInhibitor::~SleepInhibitor() {
    m_inhibition->release();
}

bool SleepInhibitor::isHeld() const {
    return m_inhibition->isHeld();
}

bool SleepInhibitor::isSettled() const {
    return m_inhibition->isSettled();
}

} // namespace corvane
