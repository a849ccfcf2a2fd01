#include "platform/Clock.h"

#include <QTimer>

namespace corvane {

namespace {

class SystemTimer : public Clock::Timer {
  public:
    SystemTimer(std::chrono::milliseconds delay, std::function<void()> action) {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(action));
        m_timer.start(delay);
    }

  private:
    QTimer m_timer;
};

class SystemClock : public Clock {
  public:
    QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
    std::chrono::milliseconds monotonic() const override {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now().time_since_epoch());
    }
    std::unique_ptr<Timer> after(std::chrono::milliseconds delay,
                                 std::function<void()> action) override {
        return std::make_unique<SystemTimer>(delay, std::move(action));
    }
};

} // namespace

Clock::Timer::~Timer() = default;
Clock::~Clock() = default;

Clock &Clock::system() {
    static SystemClock clock;
    return clock;
}

} // namespace corvane
