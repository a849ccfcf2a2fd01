#include "media/ExportCut.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr MediaTime kHalfTickTime{1, 2 * MediaTime::kTimescale};
/// Other streams are read from this much earlier, because files interleave streams only roughly and
/// audio decoders need some packets before the first sample.
constexpr MediaTime kPreroll{1, 1};
constexpr int kMaxSeeks = 24;

/// Frames around an in point, in ticks of the stream.
struct InPointScan {
    std::vector<int64_t> keyframes; ///< in file order
    std::optional<int64_t> first;   ///< the first frame at or after the in point
    std::optional<int64_t> earlier; ///< the last frame before it
    int64_t earlierDuration = 0;    ///< 0 if unknown

    /// The last keyframe in file order that isn't shown after `frame`.
    std::optional<int64_t> keyframeFor(std::optional<int64_t> frame) const {
        const auto isUsable = [&frame](int64_t keyframe) { return frame && keyframe <= *frame; };
        const auto found = std::find_if(keyframes.rbegin(), keyframes.rend(), isUsable);
        return found == keyframes.rend() ? std::nullopt : std::optional(*found);
    }
};

/// Reads the stream until no later packet can hold a frame before the first one of the cut.
InPointScan scan(ExportSource &source, int index, int64_t begin) {
    InPointScan found;
    const PacketHandle packet = makePacket();
    while (source.read(*packet)) {
        const int64_t time = timestampOf(*packet);
        if (packet->stream_index != index || time == AV_NOPTS_VALUE) {
            continue;
        }
        const int64_t dts = packet->dts == AV_NOPTS_VALUE ? time : packet->dts;
        if (found.first && dts > *found.first) {
            break;
        }
        if (isKeyframe(*packet)) {
            found.keyframes.push_back(time);
        }
        if (time >= begin) {
            found.first = std::min(time, found.first.value_or(time));
        } else if (time >= found.earlier.value_or(time)) {
            found.earlier = time;
            found.earlierDuration = packet->duration;
        }
    }
    return found;
}

/// Scans from further and further back until a keyframe precedes the first frame of the cut,
/// because some containers seek imprecisely.
InPointScan scanFromKeyframe(ExportSource &source, int index, ExportCut &cut) {
    const int64_t begin = ticksOf(cut.begin, source.stream(index).time_base, AV_ROUND_UP);
    MediaTime from = cut.begin;
    MediaTime step = kPreroll;
    for (int seeks = 0; seeks < kMaxSeeks; ++seeks) {
        const bool isFileStart = source.seek(index, from);
        InPointScan found = scan(source, index, begin);
        if (found.keyframeFor(found.first ? found.first : found.earlier) || isFileStart) {
            cut.seekTime = isFileStart ? std::nullopt : std::optional(from - kPreroll);
            return found;
        }
        from = from - step;
        step.value *= 2;
    }
    source.rewind();
    cut.seekTime.reset();
    return scan(source, index, begin);
}

/// Nominal frame duration; nullopt if unknown.
std::optional<MediaTime> frameDuration(const AVStream &stream) {
    const AVRational rate = nominalRate(stream);
    return rate.num > 0 ? std::optional(MediaTime{rate.den, rate.num}) : std::nullopt;
}

/// For a cut after the start of the file's last frame: begins with that frame if it is still shown,
/// at its own time if it started less than a nominal frame ago.
void beginWithLastFrame(const InPointScan &found, const AVStream &stream, ExportCut &cut) {
    if (!found.earlier) {
        return;
    }
    const MediaTime last = mediaTime(*found.earlier, stream.time_base);
    const MediaTime duration = mediaTime(found.earlierDuration, stream.time_base);
    const MediaTime nominal = frameDuration(stream).value_or(duration);
    if (cut.origin < last + (duration.value > 0 ? duration : nominal)) {
        cut.keyframe = found.keyframeFor(found.earlier);
        cut.shouldHoldEarlierFrame = last + nominal < cut.origin;
        if (!cut.shouldHoldEarlierFrame) {
            cut.origin = cut.begin = last;
        }
    }
}

void applyScan(const InPointScan &found, const AVStream &stream, ExportCut &cut) {
    const auto nominal = frameDuration(stream);
    if (!found.first) {
        beginWithLastFrame(found, stream, cut);
        return;
    }
    const MediaTime first = mediaTime(*found.first, stream.time_base);
    const MediaTime gap = first - cut.origin;
    const bool isFar =
        cut.isPastEnd(first) || (nominal && nominal->seconds() * 1.5 < gap.seconds());
    cut.shouldHoldEarlierFrame = found.earlier && isFar;
    cut.keyframe = found.keyframeFor(cut.shouldHoldEarlierFrame ? found.earlier : found.first);
    // Without an earlier frame, a gap at the in point is kept.
    if (gap < kHalfTickTime + kHalfTickTime || (found.earlier && !isFar)) {
        cut.origin = first;
    }
}

} // namespace

ExportCut findCut(ExportSource &source, std::optional<MediaTimeRange> range) {
    ExportCut cut{.origin = source.start(), .begin = source.start()};
    if (!range) {
        return cut;
    }
    const MediaTime in = source.start() + range->in;
    cut.isEntireFile = false;
    cut.origin = in;
    cut.begin = in - kHalfTickTime;
    cut.audioEnd = source.start() + range->out;
    cut.end = *cut.audioEnd - kHalfTickTime;
    const auto video = source.video();
    if (!video) {
        cut.seekTime = in - kPreroll;
        return cut;
    }
    source.selectStream(video);
    const InPointScan found = scanFromKeyframe(source, *video, cut);
    source.selectStream(std::nullopt);
    applyScan(found, source.stream(*video), cut);
    return cut;
}

void seekToCut(ExportSource &source, const ExportCut &cut) {
    if (cut.seekTime) {
        source.seek(source.reference(), *cut.seekTime);
    } else {
        source.rewind();
    }
}

} // namespace corvane::media
