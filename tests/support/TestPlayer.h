#pragma once

#include "media/MediaPlayer.h"

#include <QList>

#include <atomic>
#include <vector>

namespace corvane::test {

/// Runs the event loop until the condition holds. Returns false after 30 seconds.
bool eventually(const std::function<bool()> &holds);
/// Makes `eventually` check its condition again. Any thread.
void wakeEventually();

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

/// An audio output whose state and position the test sets.
class TestAudioOutput : public media::AudioOutput {
  public:
    struct Device {
        std::atomic<State> state{State::silent};
        std::atomic<double> position{0};
    };

    explicit TestAudioOutput(Device &device) : m_device(device) {}
    void setWake(std::function<void()>) override {}
    void setFile(const QString &) override {}
    void play(double seconds, double) override {
        m_device.position = seconds;
        m_device.state = State::starting;
        wakeEventually();
    }
    void pause() override {
        m_device.state = State::silent;
        wakeEventually();
    }
    State state() override { return m_device.state; }
    std::optional<double> position() override {
        return state() == State::running ? std::optional(m_device.position.load()) : std::nullopt;
    }

  private:
    Device &m_device;
};

} // namespace corvane::test
