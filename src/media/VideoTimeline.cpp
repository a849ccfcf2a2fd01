#include "media/VideoTimeline.h"

#include <algorithm>
#include <limits>

namespace corvane::media {

namespace {

constexpr qint64 kCloseKeyframesSeconds = 1;

qint64 clampedTicks(__int128 value) {
    constexpr __int128 kMax = std::numeric_limits<qint64>::max() / 4;
    return qint64(std::clamp(value, -kMax, kMax));
}

} // namespace

VideoTimeline::VideoTimeline(const MediaInput &input, AVStream &stream)
    : m_input(input),
      m_stream(stream),
      m_start(av_rescale_q(input.startTime(), kContainerTimeBase, stream.time_base)) {}

std::optional<qint64> VideoTimeline::end() const {
    const auto duration = m_input.duration();
    return duration
               ? std::optional(m_start + av_rescale_q(duration->value, {1, duration->timescale},
                                                      m_stream.time_base))
               : std::nullopt;
}

MediaTime VideoTimeline::timeAt(qint64 ticks) const {
    return {(ticks - m_start) * m_stream.time_base.num, m_stream.time_base.den};
}

/// Exact for times from `timeAt`.
qint64 VideoTimeline::ticksAt(MediaTime time) const {
    return clampedTicks((__int128(time.value) * m_stream.time_base.den) /
                            (__int128(time.timescale) * m_stream.time_base.num) +
                        m_start);
}

qint64 VideoTimeline::lookupTicks(MediaTime time) const {
    constexpr qint64 kHalfTicksPerSecond = 2 * qint64(MediaTime::kTimescale);
    const __int128 numerator =
        (__int128(time.value) * kHalfTicksPerSecond + time.timescale) * m_stream.time_base.den;
    const __int128 denominator =
        __int128(time.timescale) * kHalfTicksPerSecond * m_stream.time_base.num;
    __int128 ticks = numerator / denominator;
    if (numerator < 0 && numerator % denominator != 0) {
        --ticks;
    }
    return clampedTicks(ticks + m_start);
}

qint64 VideoTimeline::ticksFromSeconds(qint64 seconds) const {
    return av_rescale_q(seconds, {1, 1}, m_stream.time_base);
}

double VideoTimeline::secondsFromTicks(qint64 ticks) const {
    return double(ticks) * av_q2d(m_stream.time_base);
}

std::optional<MediaTime> VideoTimeline::keyframeBefore(MediaTime time) const {
    const AVIndexEntry *first = avformat_index_get_entry(&m_stream, 0);
    if (!first || m_stream.start_time == AV_NOPTS_VALUE) {
        return std::nullopt;
    }
    // An index of DTS is earlier than the PTS by the same delay for every keyframe.
    const qint64 delay = std::max<qint64>(m_stream.start_time - first->timestamp, 0);
    const AVIndexEntry *entry = keyframeAt(ticksAt(time) - 1 - delay);
    return entry ? std::optional(timeAt(entry->timestamp + delay)) : std::nullopt;
}

const AVIndexEntry *VideoTimeline::keyframeAt(qint64 ticks) const {
    const int index = av_index_search_timestamp(&m_stream, ticks, AVSEEK_FLAG_BACKWARD);
    return avformat_index_get_entry(&m_stream, index); // nullptr for a negative index
}

bool VideoTimeline::hasCloseKeyframes(qint64 ticks) const {
    const AVIndexEntry *entry = keyframeAt(ticks);
    return entry &&
           keyframeAt(entry->timestamp + ticksFromSeconds(kCloseKeyframesSeconds)) != entry;
}

} // namespace corvane::media
