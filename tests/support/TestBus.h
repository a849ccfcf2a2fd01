#pragma once

#include "support/Command.h"

#include <QString>

#include <csignal>

namespace corvane::test {

/// A private D-Bus daemon, running during the object's lifetime.
class TestBus {
  public:
    TestBus() {
        const CommandResult started = runCommand(
            {QStringLiteral("dbus-daemon"), QStringLiteral("--session"), QStringLiteral("--fork"),
             QStringLiteral("--print-address=1"), QStringLiteral("--print-pid=1")});
        const QStringList lines = QString::fromUtf8(started.output).split(QLatin1Char('\n'));
        m_address = lines.value(0);
        m_pid = lines.value(1).toInt();
    }
    ~TestBus() {
        if (m_pid > 0) {
            ::kill(m_pid, SIGTERM);
        }
    }
    Q_DISABLE_COPY_MOVE(TestBus)

    bool isRunning() const { return m_pid > 0; }
    const QString &address() const { return m_address; }

  private:
    QString m_address;
    int m_pid = 0;
};

} // namespace corvane::test
