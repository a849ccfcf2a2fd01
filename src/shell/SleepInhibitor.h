#pragma once

#include <QDBusConnection>
#include <QString>

#include <functional>

namespace corvane {

/// While it lives, the desktop neither falls asleep nor counts the time without a hand as idle. It
/// asks the system's login manager, else the session's screen saver; where neither answers there is
/// nothing to hold, and that is no failure. Nothing here waits: dropped before the answer is there,
/// it lets go as soon as it comes. Main thread.
class SleepInhibitor {
  public:
    /// Give a bus. Called on a thread of their own, as connecting waits.
    struct Buses {
        std::function<QDBusConnection()> system;
        std::function<QDBusConnection()> session;
    };

    /// `why` is what the desktop tells its user: "Footage is being imported."
    explicit SleepInhibitor(const QString &why);
    SleepInhibitor(const QString &why, Buses buses);
    ~SleepInhibitor();
    Q_DISABLE_COPY_MOVE(SleepInhibitor)

    /// Whether the desktop has said that it stays awake.
    bool isHeld() const;
    /// Whether nothing more is asked.
    bool isSettled() const;

  private:
    class Request;

    Request *m_request; ///< ends itself once it was released and answered
};

} // namespace corvane
