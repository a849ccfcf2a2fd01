#include "media/MonotonicClock.h"

namespace corvane::media {

namespace {

class SystemMonotonicClock : public MonotonicClock {
  public:
    Duration now() const override { return std::chrono::steady_clock::now().time_since_epoch(); }
    void wait(std::unique_lock<std::mutex> &lock, std::condition_variable &wake,
              std::optional<Duration> due) override {
        if (due) {
            wake.wait_until(lock, std::chrono::steady_clock::time_point(*due));
        } else {
            wake.wait(lock);
        }
    }
};

} // namespace

MonotonicClock::~MonotonicClock() = default;

MonotonicClock &MonotonicClock::system() {
    static SystemMonotonicClock source;
    return source;
}

} // namespace corvane::media
