#pragma once

#include <QDBusConnection>
#include <QString>

#include <functional>

namespace corvane {

/// Prevents sleep and idle actions of the desktop during its lifetime. Asks the login manager, then
/// the screen saver of the session; if neither responds, it has no effect. Never blocks: if it is
/// destroyed before the response arrives, the inhibition is released on arrival. Main thread only.
class SleepInhibitor {
  public:
    /// Connect to a bus. Called on a separate thread, because connecting blocks.
    struct Buses {
        std::function<QDBusConnection()> system;
        std::function<QDBusConnection()> session;
    };

    /// `why` is shown to the user by the desktop: "Footage is being imported."
    explicit SleepInhibitor(const QString &why);
    SleepInhibitor(const QString &why, Buses buses);
    ~SleepInhibitor();
    Q_DISABLE_COPY_MOVE(SleepInhibitor)

    /// True if the desktop confirmed the inhibition.
    bool isHeld() const;
    /// True if no request is in progress.
    bool isSettled() const;

  private:
    class Inhibition;

    Inhibition *m_inhibition; ///< deletes itself when it is released and answered
};

} // namespace corvane
