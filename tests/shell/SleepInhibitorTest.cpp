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

/// A service that records a request and can delay its reply.
class DesktopService : public QObject, protected QDBusContext {
    Q_OBJECT

  public:
    QStringList requested;
    bool isDelayed = false;

    void reply(const QVariant &value) {
        QDBusConnection(QStringLiteral("desktop")).send(m_request.createReply(value));
    }

  protected:
    void record(const QStringList &arguments) {
        requested = arguments;
        if (isDelayed) {
            setDelayedReply(true);
            m_request = message();
        }
    }

  private:
    QDBusMessage m_request;
};

/// A login manager whose lock is the write end of a pipe, so that the test can see it close.
class LoginManager : public DesktopService {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

  public:
    ~LoginManager() override {
        if (m_readEnd >= 0) {
            ::close(m_readEnd);
        }
    }

    bool refuses = false;

    QDBusUnixFileDescriptor makeLock() {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
        m_readEnd = ends[0];
        QDBusUnixFileDescriptor lock;
        lock.giveFileDescriptor(ends[1]);
        return lock;
    }
    bool isLockClosed() const {
        char byte = 0;
        return m_readEnd >= 0 && ::read(m_readEnd, &byte, 1) == 0;
    }

  public Q_SLOTS:
    QDBusUnixFileDescriptor Inhibit(const QString &what, const QString &who, const QString &why,
                                    const QString &mode) {
        record({what, who, why, mode});
        if (refuses) {
            sendErrorReply(QDBusError::AccessDenied, QStringLiteral("no"));
        }
        return refuses || isDelayed ? QDBusUnixFileDescriptor() : makeLock();
    }

  private:
    int m_readEnd = -1;
};

class ScreenSaver : public DesktopService {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

  public:
    static constexpr uint kCookie = 4711;

    QList<uint> released;

  public Q_SLOTS:
    uint Inhibit(const QString &who, const QString &why) {
        record({who, why});
        return kCookie;
    }
    void UnInhibit(uint cookie) { released.append(cookie); }
};

/// A private bus with the services of a desktop.
class SleepInhibitorTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(bus.isRunning());
        connectTo(QStringLiteral("desktop"));
    }
    void TearDown() override {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (const char *name : {"desktop", "client"}) {
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
        const auto client = [this] { return connectTo(QStringLiteral("client")); };
        return {client, client};
    }

    TestBus bus;
    LoginManager login;
    ScreenSaver screenSaver;
    const QString why = QStringLiteral("Footage is being imported.");
};

} // namespace

TEST_F(SleepInhibitorTest, HoldsTheLoginManagersLockForItsLifetime) {
    provideLogin();
    auto inhibitor = std::make_unique<SleepInhibitor>(why, buses());
    EXPECT_FALSE(inhibitor->isHeld()) << "the request doesn't block";
    waitUntil([&] { return inhibitor->isHeld(); });
    EXPECT_EQ(login.requested, (QStringList{QStringLiteral("sleep:idle"), QStringLiteral("Corvane"),
                                            why, QStringLiteral("block")}));
    EXPECT_FALSE(login.isLockClosed());
    inhibitor.reset();
    waitUntil([&] { return login.isLockClosed(); });
}

TEST_F(SleepInhibitorTest, UsesTheScreenSaverIfTheLoginManagerRefuses) {
    login.refuses = true;
    provideLogin();
    provideScreenSaver();
    auto inhibitor = std::make_unique<SleepInhibitor>(why, buses());
    waitUntil([&] { return inhibitor->isHeld(); });
    EXPECT_EQ(screenSaver.requested, (QStringList{QStringLiteral("Corvane"), why}));
    inhibitor.reset();
    waitUntil([&] { return !screenSaver.released.isEmpty(); });
    EXPECT_EQ(screenSaver.released, QList<uint>{ScreenSaver::kCookie});
}

TEST_F(SleepInhibitorTest, ReleasesAnInhibitionThatIsGrantedAfterItsEnd) {
    login.isDelayed = true;
    provideLogin();
    auto inhibitor = std::make_unique<SleepInhibitor>(why, buses());
    waitUntil([&] { return !login.requested.isEmpty(); });
    inhibitor.reset();
    login.reply(QVariant::fromValue(login.makeLock()));
    waitUntil([&] { return login.isLockClosed(); });

    login.isDelayed = false;
    login.refuses = true;
    screenSaver.isDelayed = true;
    provideScreenSaver();
    inhibitor = std::make_unique<SleepInhibitor>(why, buses());
    waitUntil([&] { return !screenSaver.requested.isEmpty(); });
    inhibitor.reset();
    screenSaver.reply(ScreenSaver::kCookie);
    waitUntil([&] { return !screenSaver.released.isEmpty(); });
}

TEST_F(SleepInhibitorTest, HasNoEffectWithoutServicesOrABus) {
    const auto noBus = [] { return QDBusConnection(QStringLiteral("no such bus")); };
    for (const SleepInhibitor::Buses &unavailable :
         {buses(), SleepInhibitor::Buses{noBus, noBus}}) {
        const SleepInhibitor inhibitor(why, unavailable);
        waitUntil([&] { return inhibitor.isSettled(); });
        EXPECT_FALSE(inhibitor.isHeld());
    }
}

#include "SleepInhibitorTest.moc"
