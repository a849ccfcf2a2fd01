#pragma once

#include "media/MediaPlayer.h"

#include <QList>

#include <atomic>
#include <vector>

namespace corvane::test {

/// Runs the event loop until it holds; false if that takes longer than any machine should need.
bool eventually(const std::function<bool()> &holds);

/// A time that stands until it is told to go on.
class TestMonotonicClock : public media::MonotonicClock {
  public:
    Duration now() const override { return m_now; }
    void wait(std::unique_lock<std::mutex> &lock, std::condition_variable &wake,
              std::optional<Duration> due) override;

    void advance(std::chrono::duration<double> step);

  private:
    std::atomic<Duration> m_now{Duration(0)};
    std::mutex m_mutex;
    std::mutex *m_waitingMutex = nullptr; ///< of who waits, with `m_waiting`
    std::condition_variable *m_waiting = nullptr;
};

/// Keeps what it is shown.
class TestSink : public media::FrameSink {
  public:
    struct Shown {
        std::optional<int> number; ///< that the picture carries
        media::DisplayFrame frame;
    };

    QSize wantedSize() const override { return size; }
    void show(media::DisplayFrame frame) override;
    void clear() override;

    /// Since the last clearing.
    QList<Shown> shown() const;
    QList<int> numbers() const;
    /// Of the latest picture; -1 where there is none.
    int number() const;

    QSize size;           ///< set before it is used
    int quarterTurns = 0; ///< of the clip

  private:
    mutable std::mutex m_mutex;
    std::vector<Shown> m_shown;
};

} // namespace corvane::test
