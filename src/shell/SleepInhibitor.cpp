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

QDBusMessage inhibitByLogin(const QString &why) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
        QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("Inhibit"));
    call << QStringLiteral("sleep:idle") << QStringLiteral("Corvane") << why
         << QStringLiteral("block");
    return call;
}

QDBusMessage toScreenSaver(const char *method) {
    const QString name = QLatin1String(kScreenSaver);
    return QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/ScreenSaver"),
                                          name, QLatin1String(method));
}

SerialExecutor &connectingExecutor() {
    static SerialExecutor executor(QStringLiteral("buses"), SerialExecutor::Priority::Utility);
    return executor;
}

} // namespace

/// Requests an inhibition, holds it and releases it. Outlives its inhibitor until the response
/// arrives, because only the response identifies the inhibition.
class SleepInhibitor::Request : public QObject {
  public:
    Request(QString why, Buses buses) : m_why(std::move(why)), m_buses(std::move(buses)) {}

    bool isHeld() const { return m_lock.isValid() || m_cookie; }
    bool isSettled() const { return m_isSettled; }

    QCoro::Task<> askLogin() {
        const QDBusConnection bus = co_await connectingExecutor().run(m_buses.system);
        if (!m_isWanted) {
            settle();
            co_return;
        }
        ask(bus, inhibitByLogin(m_why), [this](const QDBusPendingCall &call) {
            const QDBusPendingReply<QDBusUnixFileDescriptor> answer = call;
            if (answer.isValid() && answer.value().isValid()) {
                m_lock = answer.value();
                settle();
            } else {
                detach(askScreenSaver());
            }
        });
    }

    void release() {
        m_isWanted = false;
        if (m_isSettled) {
            giveBack();
            delete this;
        }
    }

  private:
    QCoro::Task<> askScreenSaver() {
        if (m_isWanted) {
            m_session = co_await connectingExecutor().run(m_buses.session);
        }
        if (!m_isWanted) {
            settle();
            co_return;
        }
        QDBusMessage question = toScreenSaver("Inhibit");
        question << QStringLiteral("Corvane") << m_why;
        ask(*m_session, question, [this](const QDBusPendingCall &call) {
            const QDBusPendingReply<uint> answer = call;
            if (answer.isValid()) {
                m_cookie = answer.value();
            }
            settle();
        });
    }

    /// Fails at once if the bus is not connected, because its calls would never finish.
    void ask(const QDBusConnection &bus, const QDBusMessage &question,
             std::function<void(const QDBusPendingCall &)> answered) {
        if (!bus.isConnected()) {
            answered(QDBusPendingCall::fromError(bus.lastError()));
            return;
        }
        auto *const watcher = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
        connect(watcher, &QDBusPendingCallWatcher::finished, this,
                [watcher, answered = std::move(answered)] {
                    watcher->deleteLater();
                    answered(*watcher);
                });
    }

    /// No further request follows.
    void settle() {
        m_isSettled = true;
        if (!m_isWanted) {
            giveBack();
            deleteLater();
        }
    }

    /// The login manager's lock is held as long as the descriptor is open.
    void giveBack() {
        m_lock = QDBusUnixFileDescriptor();
        if (m_cookie) {
            QDBusMessage message = toScreenSaver("UnInhibit");
            message << *m_cookie;
            m_session->send(message);
            m_cookie.reset();
        }
    }

    QString m_why;
    Buses m_buses;
    bool m_isWanted = true;
    bool m_isSettled = false;
    QDBusUnixFileDescriptor m_lock;
    std::optional<QDBusConnection> m_session;
    std::optional<uint> m_cookie;
};

SleepInhibitor::SleepInhibitor(const QString &why)
    : SleepInhibitor(why, {&QDBusConnection::systemBus, &QDBusConnection::sessionBus}) {}

SleepInhibitor::SleepInhibitor(const QString &why, Buses buses)
    : m_request(new Request(why, std::move(buses))) {
    detach(m_request->askLogin());
}

SleepInhibitor::~SleepInhibitor() {
    m_request->release();
}

bool SleepInhibitor::isHeld() const {
    return m_request->isHeld();
}

bool SleepInhibitor::isSettled() const {
    return m_request->isSettled();
}

} // namespace corvane
