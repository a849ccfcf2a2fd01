#include "media/ExportCut.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr MediaTime kHalfTickTime{1, 2 * MediaTime::kTimescale};
/// So much earlier the other streams are read, since a file stores them only roughly side by side
/// and a sound's decoder needs what precedes its first sample.
constexpr MediaTime kPreroll{1, 1};
constexpr int kMostSteps = 24;

/// What the packets around an in point tell.
struct InPointScan {
    std::vector<int64_t> keys;      ///< in the file's order
    std::optional<int64_t> shown;   ///< the first frame at or after the in point
    std::optional<int64_t> earlier; ///< the last frame before it
    int64_t earlierLength = 0;      ///< as its packet tells; 0 where it doesn't

    /// The last key frame that isn't shown after `frame`.
    std::optional<int64_t> lastKey(std::optional<int64_t> frame) const {
        const auto fits = [&frame](int64_t key) { return frame && key <= *frame; };
        const auto found = std::find_if(keys.rbegin(), keys.rend(), fits);
        return found == keys.rend() ? std::nullopt : std::optional(*found);
    }
};

/// Reads the reference stream until no later packet can hold an earlier frame.
InPointScan scan(ExportSource &source, int index, int64_t first) {
    InPointScan found;
    const PacketHandle packet = makePacket();
    while (source.read(*packet)) {
        const int64_t shown = packet->pts == AV_NOPTS_VALUE ? packet->dts : packet->pts;
        const int64_t decoded = packet->dts == AV_NOPTS_VALUE ? shown : packet->dts;
        const int64_t length = packet->duration;
        const bool isKey = packet->flags & AV_PKT_FLAG_KEY;
        const bool isWanted = packet->stream_index == index && shown != AV_NOPTS_VALUE;
        av_packet_unref(packet.get());
        if (!isWanted) {
            continue;
        }
        if (found.shown && decoded > *found.shown) {
            break;
        }
        if (isKey) {
            found.keys.push_back(shown);
        }
        if (shown >= first) {
            found.shown = std::min(shown, found.shown.value_or(shown));
        } else if (shown >= found.earlier.value_or(shown)) {
            found.earlier = shown;
            found.earlierLength = length;
        }
    }
    return found;
}

/// Searches ever further back until a key frame comes before the first frame that is shown: some
/// formats find a time only roughly.
InPointScan scanBack(ExportSource &source, int index, ExportCut &cut) {
    const AVRational base = source.stream(index).time_base;
    const int64_t first = ticksOf(cut.first, base, AV_ROUND_UP);
    MediaTime from = cut.first;
    MediaTime step = kPreroll;
    for (int i = 0; i < kMostSteps; ++i) {
        const bool isBeginning = source.seek(index, from);
        InPointScan found = scan(source, index, first);
        if (found.lastKey(found.shown ? found.shown : found.earlier) || isBeginning) {
            cut.seek = isBeginning ? std::nullopt : std::optional(from - kPreroll);
            return found;
        }
        from = from - step;
        step.value *= 2;
    }
    source.rewind();
    cut.seek.reset();
    return scan(source, index, first);
}

/// The length of a frame of the stream; nothing where it tells none.
std::optional<MediaTime> frameLength(const AVStream &stream) {
    const AVRational rate = nominalRate(stream);
    return rate.num > 0 ? std::optional(MediaTime{rate.den, rate.num}) : std::nullopt;
}

/// A cut that begins while the file's last frame is shown shows that one, from its begin where that
/// is less than a usual frame ago.
void adoptLast(const InPointScan &found, const AVStream &stream, ExportCut &cut) {
    if (!found.earlier) {
        return;
    }
    const MediaTime last = mediaTime(*found.earlier, stream.time_base);
    const MediaTime told = mediaTime(found.earlierLength, stream.time_base);
    const MediaTime usual = frameLength(stream).value_or(told);
    if (cut.zero < last + (told.value > 0 ? told : usual)) {
        cut.key = found.lastKey(found.earlier);
        cut.showsEarlierFrame = last + usual < cut.zero;
        if (!cut.showsEarlierFrame) {
            cut.zero = cut.first = last;
        }
    }
}

void adopt(const InPointScan &found, const AVStream &stream, ExportCut &cut) {
    const auto length = frameLength(stream);
    if (!found.shown) {
        adoptLast(found, stream, cut);
        return;
    }
    const MediaTime shown = mediaTime(*found.shown, stream.time_base);
    // The picture of the in point is still to come, so nothing of it may be lost.
    const MediaTime gap = shown - cut.zero;
    const bool isFar = cut.isPastLast(shown) || (length && length->seconds() * 1.5 < gap.seconds());
    cut.showsEarlierFrame = found.earlier && isFar;
    cut.key = found.lastKey(cut.showsEarlierFrame ? found.earlier : found.shown);
    if (gap < kHalfTickTime + kHalfTickTime || (found.earlier && !isFar)) {
        cut.zero = shown;
    }
}

} // namespace

ExportCut locateCut(ExportSource &source, std::optional<MediaTimeRange> range) {
    ExportCut cut{.zero = source.start(), .first = source.start()};
    if (!range) {
        return cut;
    }
    const MediaTime in = source.start() + range->in;
    cut.isWhole = false;
    cut.zero = in;
    cut.first = in - kHalfTickTime;
    cut.out = source.start() + range->out;
    cut.last = *cut.out - kHalfTickTime;
    const auto video = source.video();
    if (!video) {
        cut.seek = in - kPreroll;
        return cut;
    }
    source.readOnly(video);
    const InPointScan found = scanBack(source, *video, cut);
    source.readOnly(std::nullopt);
    adopt(found, source.stream(*video), cut);
    return cut;
}

void goToCut(ExportSource &source, const ExportCut &cut) {
    if (cut.seek) {
        source.seek(source.reference(), *cut.seek);
    } else {
        source.rewind();
    }
}

} // namespace corvane::media
