#include "shell/SleepInhibitor.h"

#include "ShellFixture.h"
#include "support/TestBus.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>

#include <fcntl.h>
#include <unistd.h>

using namespace corvane;
using namespace corvane::test;

namespace {

/// A login manager whose lock is the writing end of a pipe, so that the test sees it close.
class LoginManager : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

  public:
    ~LoginManager() override {
        if (m_reading >= 0) {
            ::close(m_reading);
        }
    }

    QStringList asked;
    bool refuses = false;
    bool waits = false;

    void answer() {
        QDBusConnection desktop(QStringLiteral("desktop"));
        desktop.send(m_question.createReply(QVariant::fromValue(makeLock())));
    }
    bool lockIsClosed() const {
        char byte = 0;
        return m_reading >= 0 && ::read(m_reading, &byte, 1) == 0;
    }

  public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &who, const QString &why,
                                    const QString &mode) {
        asked = {what, who, why, mode};
        if (refuses) {
            sendErrorReply(QDBusError::AccessDenied, QStringLiteral("no"));
            return {};
        }
        if (waits) {
            setDelayedReply(true);
            m_question = message();
            return {};
        }
        return makeLock();
    }

  private:
    QDBusUnixFileDescriptor makeLock() {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
        m_reading = ends[0];
        QDBusUnixFileDescriptor lock;
        lock.giveFileDescriptor(ends[1]);
        return lock;
    }

    int m_reading = -1;
    QDBusMessage m_question;
};

class ScreenSaver : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

  public:
    QStringList asked;
    QList<uint> letGo;
    bool waits = false;

    void answer() {
        QDBusConnection(QStringLiteral("desktop")).send(m_question.createReply(kCookie));
    }

    static constexpr uint kCookie = 4711;

  public Q_SLOTS:
    uint Inhibit(const QString &who, const QString &why) {
        asked = {who, why};
        if (waits) {
            setDelayedReply(true);
            m_question = message();
        }
        return kCookie;
    }
    void UnInhibit(uint cookie) { letGo.append(cookie); }

  private:
    QDBusMessage m_question;
};

/// A bus of the test's own with the services of a desktop.
class SleepInhibitorTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(bus.isRunning());
        connectTo(QStringLiteral("desktop"));
    }
    void TearDown() override {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (const char *name : {"desktop", "asking"}) {
            QDBusConnection::disconnectFromBus(QLatin1String(name));
        }
    }

    QDBusConnection connectTo(const QString &name) const {
        return QDBusConnection::connectToBus(bus.address(), name);
    }
    void provide(const char *service, const char *path, QObject *object) {
        QDBusConnection desktop(QStringLiteral("desktop"));
        ASSERT_TRUE(
            desktop.registerObject(QLatin1String(path), object, QDBusConnection::ExportAllSlots));
        ASSERT_TRUE(desktop.registerService(QLatin1String(service)));
    }
    void provideLogin() { provide("org.freedesktop.login1", "/org/freedesktop/login1", &login); }
    void provideScreenSaver() {
        provide("org.freedesktop.ScreenSaver", "/org/freedesktop/ScreenSaver", &screenSaver);
    }
    SleepInhibitor::Buses buses() const {
        const auto asking = [this] { return connectTo(QStringLiteral("asking")); };
        return {asking, asking};
    }

    TestBus bus;
    LoginManager login;
    ScreenSaver screenSaver;
    const QString why = QStringLiteral("Footage is being imported.");
};

} // namespace

TEST_F(SleepInhibitorTest, HoldsTheLoginManagersLockUntilItIsDropped) {
    provideLogin();
    auto inhibitor = std::make_unique<SleepInhibitor>(why, buses());
    EXPECT_FALSE(inhibitor->isHeld()) << "it was asked without waiting";
    waitUntil([&] { return inhibitor->isHeld(); });
    EXPECT_EQ(login.asked, (QStringList{QStringLiteral("sleep:idle"), QStringLiteral("Corvane"),
                                        why, QStringLiteral("block")}));
    EXPECT_FALSE(login.lockIsClosed());
    inhibitor.reset();
    waitUntil([&] { return login.lockIsClosed(); });
}

TEST_F(SleepInhibitorTest, AsksTheScreenSaverWhereTheLoginManagerRefuses) {
    login.refuses = true;
    provideLogin();
    provideScreenSaver();
    auto inhibitor = std::make_unique<SleepInhibitor>(why, buses());
    waitUntil([&] { return inhibitor->isHeld(); });
    EXPECT_EQ(screenSaver.asked, (QStringList{QStringLiteral("Corvane"), why}));
    inhibitor.reset();
    waitUntil([&] { return !screenSaver.letGo.isEmpty(); });
    EXPECT_EQ(screenSaver.letGo, QList<uint>{ScreenSaver::kCookie});
}

TEST_F(SleepInhibitorTest, LetsGoWhenTheAnswerComesAfterItWasDropped) {
    login.waits = true;
    provideLogin();
    auto inhibitor = std::make_unique<SleepInhibitor>(why, buses());
    waitUntil([&] { return !login.asked.isEmpty(); });
    inhibitor.reset();
    login.answer();
    waitUntil([&] { return login.lockIsClosed(); });

    login.waits = false;
    login.refuses = true;
    screenSaver.waits = true;
    provideScreenSaver();
    inhibitor = std::make_unique<SleepInhibitor>(why, buses());
    waitUntil([&] { return !screenSaver.asked.isEmpty(); });
    inhibitor.reset();
    screenSaver.answer();
    waitUntil([&] { return !screenSaver.letGo.isEmpty(); });
}

TEST_F(SleepInhibitorTest, IsNothingWithoutServicesOrWithoutABus) {
    const auto none = [] { return QDBusConnection(QStringLiteral("no such bus")); };
    for (const SleepInhibitor::Buses &tried : {buses(), SleepInhibitor::Buses{none, none}}) {
        const SleepInhibitor inhibitor(why, tried);
        waitUntil([&] { return inhibitor.isSettled(); });
        EXPECT_FALSE(inhibitor.isHeld());
    }
}

#include "SleepInhibitorTest.moc"
