#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"

#include <optional>
#include <set>

namespace corvane::media {

/// The presentation times of a stream that tells only when its pictures are decoded, as AVI does.
/// Pictures come out in the order in which they are shown, so each gets the least decoding time of
/// those not given yet. Times are the stream's own.
class PtsReconstructor {
  public:
    /// Before each packet is decoded.
    void note(const AVPacket &packet) {
        if (packet.pts == AV_NOPTS_VALUE && packet.dts != AV_NOPTS_VALUE) {
            m_times.insert(packet.dts);
        }
        if (m_times.size() > kMost) {
            m_times.erase(m_times.begin());
        }
    }

    /// For each picture as it comes out; nothing where neither it nor its packet tells.
    std::optional<int64_t> timeOf(const AVFrame &picture) {
        if (picture.pts != AV_NOPTS_VALUE) {
            return picture.pts;
        }
        if (!m_times.empty()) {
            return m_times.extract(m_times.begin()).value();
        }
        const int64_t guessed = picture.best_effort_timestamp;
        return guessed == AV_NOPTS_VALUE ? std::nullopt : std::optional(guessed);
    }

    void clear() { m_times.clear(); }

  private:
    static constexpr size_t kMost = 64;

    std::multiset<int64_t> m_times;
};

} // namespace corvane::media
