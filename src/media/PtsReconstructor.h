#pragma once

// Internal to src/media.

#include "media/FFmpegHandles.h"

#include <optional>
#include <set>

namespace corvane::media {

/// Derives the PTS of frames in a stream with DTS but no PTS, for example in AVI. The decoder
/// returns frames in presentation order, so each one gets the smallest DTS that isn't used yet.
/// Timestamps are the stream's own.
class PtsReconstructor {
  public:
    /// Call for each packet before it is decoded.
    void addPacket(const AVPacket &packet) {
        if (packet.pts == AV_NOPTS_VALUE && packet.dts != AV_NOPTS_VALUE) {
            m_unused.insert(packet.dts);
        }
        if (m_unused.size() > kMaxUnused) {
            m_unused.erase(m_unused.begin());
        }
    }

    /// Call for each frame in the decoder's order. Returns nullopt if neither the frame nor its
    /// packet has a timestamp.
    std::optional<int64_t> ptsOf(const AVFrame &frame) {
        if (frame.pts != AV_NOPTS_VALUE) {
            return frame.pts;
        }
        if (!m_unused.empty()) {
            return m_unused.extract(m_unused.begin()).value();
        }
        const int64_t guess = frame.best_effort_timestamp;
        return guess == AV_NOPTS_VALUE ? std::nullopt : std::optional(guess);
    }

    void clear() { m_unused.clear(); }

  private:
    static constexpr size_t kMaxUnused = 64;

    std::multiset<int64_t> m_unused;
};

} // namespace corvane::media
