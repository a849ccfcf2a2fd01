#pragma once

#include "media/MediaPlayer.h"

#include <QList>

#include <atomic>
#include <vector>

namespace corvane::test {

/// Runs the event loop until the condition holds. Returns false after 30 seconds.
bool eventually(const std::function<bool()> &holds);

/// A clock that only advances on request.
class TestMonotonicClock : public media::MonotonicClock {
  public:
    Duration now() const override { return m_now; }
    void wait(std::unique_lock<std::mutex> &lock, std::condition_variable &wake,
              std::optional<Duration> due) override;

    void advance(std::chrono::duration<double> step);

  private:
    std::atomic<Duration> m_now{Duration(0)};
    std::mutex m_mutex;
    std::mutex *m_waitingMutex = nullptr; ///< of the thread in `wait`, with `m_waiting`
    std::condition_variable *m_waiting = nullptr;
};

/// Records the frames it receives. Thread-safe.
class TestSink : public media::FrameSink {
  public:
    struct Shown {
        std::optional<int> number; ///< see `frameNumber`
        media::DisplayFrame frame;
    };

    QSize wantedSize() const override { return size; }
    void show(media::DisplayFrame frame) override;
    void clear() override;

    // The frames since the last `clear`. In `numbers`, -1 for a frame without a number.
    QList<Shown> shown() const;
    QList<int> numbers() const;
    /// The number of the latest frame; -1 if it has none or there is no frame.
    int number() const;

    QSize size;           ///< must be set before use
    int quarterTurns = 0; ///< of the clip

  private:
    mutable std::mutex m_mutex;
    std::vector<Shown> m_shown;
};

} // namespace corvane::test
