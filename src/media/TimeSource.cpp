#include "media/TimeSource.h"

namespace corvane::media {

namespace {

class SystemTimeSource : public TimeSource {
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

TimeSource::~TimeSource() = default;

TimeSource &TimeSource::system() {
    static SystemTimeSource source;
    return source;
}

} // namespace corvane::media
