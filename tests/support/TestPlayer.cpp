#include "support/TestPlayer.h"

#include "support/TestMedia.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

namespace corvane::test {

namespace {

constexpr std::chrono::seconds kLongestWait{30};

} // namespace

bool eventually(const std::function<bool()> &holds) {
    const QDeadlineTimer deadline(kLongestWait);
    QTimer::singleShot(kLongestWait + std::chrono::seconds(1), Qt::PreciseTimer, qApp,
                       [] {}); // ends a wait without other events
    while (!holds()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void wakeEventually() {
    QMetaObject::invokeMethod(qApp, [] {}, Qt::QueuedConnection);
}

void TestMonotonicClock::wait(std::unique_lock<std::mutex> &lock, std::condition_variable &wake,
                              std::optional<Duration> due) {
    {
        const std::scoped_lock own(m_mutex);
        m_waitingMutex = lock.mutex();
        m_waiting = &wake;
    }
    if (!due || now() < *due) {
        wake.wait(lock);
    }
    const std::scoped_lock own(m_mutex);
    m_waiting = nullptr;
}

void TestMonotonicClock::advance(std::chrono::duration<double> step) {
    m_now = now() + std::chrono::round<Duration>(step);
    std::mutex *mutex = nullptr;
    std::condition_variable *waiting = nullptr;
    {
        const std::scoped_lock own(m_mutex);
        mutex = m_waitingMutex;
        waiting = m_waiting;
    }
    if (waiting) {
        const std::scoped_lock lock(*mutex); // the waiting thread has read the time
        waiting->notify_all();
    }
}

void TestSink::show(media::DisplayFrame frame) {
    const auto *pixels = frame.pixels.get();
    const auto brightness = [&](int x, int y) {
        constexpr double kWhite = 255;
        return pixels[y * frame.bytesPerLine + x * 4 + 1] / kWhite; // green
    };
    const auto number = frameNumber({frame.width, frame.height}, quarterTurns, brightness);
    {
        const std::scoped_lock lock(m_mutex);
        m_shown.push_back({number, std::move(frame)});
    }
    wakeEventually();
}

void TestSink::clear() {
    const std::scoped_lock lock(m_mutex);
    m_shown.clear();
}

QList<TestSink::Shown> TestSink::shown() const {
    const std::scoped_lock lock(m_mutex);
    return {m_shown.begin(), m_shown.end()};
}

QList<int> TestSink::numbers() const {
    QList<int> numbers;
    for (const auto &shown : shown()) {
        numbers.append(shown.number.value_or(-1));
    }
    return numbers;
}

int TestSink::number() const {
    const std::scoped_lock lock(m_mutex);
    return m_shown.empty() ? -1 : m_shown.back().number.value_or(-1);
}

} // namespace corvane::test
