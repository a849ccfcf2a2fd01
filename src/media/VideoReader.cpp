#include "media/VideoReader.h"

#include "media/FrameDecoder.h"
#include "media/NonReferenceDetector.h"
#include "media/VideoPacketQueue.h"

extern "C" {
#include <libavutil/display.h>
#include <libavutil/imgutils.h>
}

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace corvane::media {

namespace {

/// After so many packets without a whole picture, there is none.
constexpr int kMostFruitlessPackets = 2000;
/// Key frames no further apart than this make it quick to begin anew.
constexpr qint64 kCloseKeysSeconds = 1;
constexpr qint64 kLongestWayBack = qint64(1) << 24; ///< seconds; no film is as long

qint64 clamped(__int128 value) {
    constexpr __int128 kMost = std::numeric_limits<qint64>::max() / 4;
    return qint64(std::clamp(value, -kMost, kMost));
}

} // namespace

/// What the reader works with. Times are in the stream's time base, on the container's own axis.
struct VideoReader::Stream {
    Stream(const QString &path, const Options &options, std::stop_token stop)
        : input(path, MediaInput::Depth::Timestamps, std::move(stop)),
          stream(videoOf(input)),
          packets(input, stream),
          decoder(stream, options),
          unreferenced(*stream.codecpar),
          start(av_rescale_q(input.startTime(), kContainerTimeBase, stream.time_base)),
          isSingleFrameRead(options.isSingleFrameRead) {}

    using Decoded = FrameDecoder::Decoded;

    /// What is looked for: the last frame up to `target`, or the first that comes to hand from
    /// `earliest` to `latest`.
    struct Goal {
        qint64 target = 0;
        qint64 earliest = 0;
        qint64 latest = 0;
    };

    static AVStream &videoOf(const MediaInput &input) {
        AVStream *stream = input.firstVideoStream();
        if (!stream) {
            throw MediaError(QStringLiteral("It has no video track."));
        }
        return *stream;
    }

    Goal goalFor(MediaTime time, double tolerance) const;
    MediaTime timeFor(qint64 ticks) const;
    qint64 ticksFor(MediaTime time) const;
    std::optional<VideoFrame> given(const std::function<std::optional<Decoded>(Stream &)> &look);
    VideoFrame shown(const Decoded &frame);

    bool isCurrent(const Goal &goal) const;
    bool leadsTo(const Goal &goal) const;
    std::optional<Decoded> find(const Goal &goal);
    std::optional<Decoded> findAfterCurrent();
    bool startBefore(const Goal &goal, qint64 stepBack, qint64 latestKey);
    std::optional<Decoded> decodeTo(const Goal &goal, std::optional<Decoded> before);
    std::optional<Decoded> decodeNext(const Goal *goal = nullptr);
    bool maySkip(const AVPacket &packet, const Goal &goal);
    bool isEnough(const AVPacket &packet, const Goal &goal);
    bool wasTooLittle(const std::optional<Decoded> &frame, const Goal &goal) const;
    bool hasCloseKeyframes(qint64 time) const;
    qint64 endOf(const Decoded &frame);

    MediaInput input;
    AVStream &stream;
    VideoPacketQueue packets;
    FrameDecoder decoder;
    NonReferenceDetector unreferenced;
    qint64 start; ///< of the asset's presentation
    bool isSingleFrameRead;
    bool isCutShort = false; ///< decoding can't go on from here

    std::optional<Decoded> current; ///< the last one given
    qint64 currentEnd = 0;
    std::optional<Decoded> pending; ///< decoded already, comes next
    qint64 lastDecoded = std::numeric_limits<qint64>::min();
};

VideoReader::VideoReader(const QString &path, Options options, std::stop_token stop)
    : m_stream(std::make_unique<Stream>(path, options, std::move(stop))) {}

VideoReader::~VideoReader() = default;

std::optional<MediaTime> VideoReader::duration() const {
    return m_stream->input.duration();
}

QSize VideoReader::storedSize() const {
    return {m_stream->stream.codecpar->width, m_stream->stream.codecpar->height};
}

double VideoReader::nominalFrameRate() const {
    return av_q2d(nominalRate(m_stream->stream));
}

int VideoReader::quarterTurns() const {
    const uint8_t *matrix =
        av_stream_get_side_data(&m_stream->stream, AV_PKT_DATA_DISPLAYMATRIX, nullptr);
    const double degrees =
        matrix ? -av_display_rotation_get(reinterpret_cast<const int32_t *>(matrix)) : 0;
    return std::isfinite(degrees) ? (int(std::lround(degrees / 90)) % 4 + 4) % 4 : 0;
}

/// An index may tell when frames are decoded, which is earlier by the same for every key frame.
std::optional<MediaTime> VideoReader::keyframeBefore(MediaTime time) const {
    const Stream &reader = *m_stream;
    const AVIndexEntry *first = avformat_index_get_entry(&reader.stream, 0);
    if (!first || reader.stream.start_time == AV_NOPTS_VALUE) {
        return std::nullopt;
    }
    const qint64 delay = std::max<qint64>(reader.stream.start_time - first->timestamp, 0);
    const qint64 latest = reader.ticksFor(time) - 1 - delay;
    const int index = av_index_search_timestamp(&reader.stream, latest, AVSEEK_FLAG_BACKWARD);
    const AVIndexEntry *key = avformat_index_get_entry(&reader.stream, index);
    return key ? std::optional(reader.timeFor(key->timestamp + delay)) : std::nullopt;
}

std::optional<double> VideoReader::secondsToDecode(MediaTime time) const {
    const Stream::Goal goal = m_stream->goalFor(time, 0);
    if (!m_stream->leadsTo(goal)) {
        return std::nullopt;
    }
    return double(goal.target - m_stream->current->time) * av_q2d(m_stream->stream.time_base);
}

bool VideoReader::hasCloseKeyframes(MediaTime time) const {
    return m_stream->hasCloseKeyframes(m_stream->goalFor(time, 0).target);
}

void VideoReader::setSingleFrameRead(bool only) {
    m_stream->isSingleFrameRead = only;
}

void VideoReader::setStop(std::stop_token stop) {
    m_stream->input.setStop(std::move(stop));
}

std::optional<VideoFrame> VideoReader::frameAt(MediaTime time, double tolerance) {
    return m_stream->given([&](Stream &stream) {
        const Stream::Goal goal = stream.goalFor(time, tolerance);
        return stream.isCurrent(goal) ? stream.current : stream.find(goal);
    });
}

std::optional<VideoFrame> VideoReader::next() {
    return m_stream->given([](Stream &stream) {
        if (stream.isCutShort) {
            return stream.findAfterCurrent();
        }
        return stream.pending ? std::exchange(stream.pending, {}) : stream.decodeNext();
    });
}

/// Gives what `look` finds. Where that throws, packets may be lost, so that the next look must
/// begin anew.
std::optional<VideoFrame>
VideoReader::Stream::given(const std::function<std::optional<Decoded>(Stream &)> &look) {
    try {
        const auto frame = look(*this);
        return frame ? std::optional(shown(*frame)) : std::nullopt;
    } catch (...) {
        isCutShort = true;
        pending.reset();
        throw;
    }
}

qsizetype VideoFrame::byteCount() const {
    qsizetype bytes = 0;
    for (const AVBufferRef *buffer : avFrame->buf) {
        bytes += buffer ? qsizetype(buffer->size) : 0;
    }
    return bytes;
}

/// Rounds down, so that the frame which begins at the time itself is still named.
VideoReader::Stream::Goal VideoReader::Stream::goalFor(MediaTime time, double tolerance) const {
    // Half a tick of 1/600 s is 1/1200 s.
    constexpr qint64 kHalfTicks = 2 * qint64(MediaTime::kTimescale);
    const __int128 numerator =
        (__int128(time.value) * kHalfTicks + time.timescale) * stream.time_base.den;
    const __int128 denominator = __int128(time.timescale) * kHalfTicks * stream.time_base.num;
    __int128 ticks = numerator / denominator;
    if (numerator < 0 && numerator % denominator != 0) {
        --ticks;
    }
    const qint64 target = clamped(ticks + start);
    const auto allowed = qint64(std::max(tolerance, 0.0) / av_q2d(stream.time_base));
    return {target, target - allowed, target + allowed};
}

MediaTime VideoReader::Stream::timeFor(qint64 ticks) const {
    return {(ticks - start) * stream.time_base.num, stream.time_base.den};
}

/// Exact for the times of this reader's frames.
qint64 VideoReader::Stream::ticksFor(MediaTime time) const {
    return clamped((__int128(time.value) * stream.time_base.den) /
                       (__int128(time.timescale) * stream.time_base.num) +
                   start);
}

VideoFrame VideoReader::Stream::shown(const Decoded &frame) {
    currentEnd = endOf(frame);
    packets.forgetBefore(frame.time);
    current = frame;
    return {frame.avFrame, timeFor(frame.time), timeFor(currentEnd)};
}

qint64 VideoReader::Stream::endOf(const Decoded &frame) {
    if (pending) {
        return pending->time;
    }
    (void)packets.readPast(frame.time);
    return packets.presentationAfter(frame.time)
        .value_or(frame.time + std::max<qint64>(frame.duration, 1));
}

bool VideoReader::Stream::isCurrent(const Goal &goal) const {
    if (!current) {
        return false;
    }
    const bool isNear = current->time >= goal.earliest && current->time <= goal.latest;
    const bool isNamed = current->time <= goal.target && goal.target < currentEnd;
    return isNamed || (isNear && goal.earliest < goal.latest);
}

/// Whether decoding on from here is the shortest way.
bool VideoReader::Stream::leadsTo(const Goal &goal) const {
    if (!current || current->time > goal.target || decoder.isDrained() || isCutShort) {
        return false;
    }
    const int index = av_index_search_timestamp(&stream, goal.latest, AVSEEK_FLAG_BACKWARD);
    if (index < 0) {
        return av_compare_ts(goal.target - current->time, stream.time_base, 1, {1, 1}) < 0;
    }
    const AVIndexEntry *entry = avformat_index_get_entry(&stream, index);
    return entry->timestamp <= packets.lastTaken();
}

std::optional<FrameDecoder::Decoded> VideoReader::Stream::find(const Goal &goal) {
    if (leadsTo(goal)) {
        auto frame = decodeTo(goal, current);
        if (frame && !wasTooLittle(frame, goal)) {
            return frame;
        }
    }
    // Where nothing was found or it lies beyond, the way back doubles until it is long enough.
    bool wasFruitless = false;
    for (qint64 seconds = 0; seconds < kLongestWayBack; seconds = seconds == 0 ? 1 : seconds * 2) {
        const qint64 stepBack = av_rescale_q(seconds, {1, 1}, stream.time_base);
        const qint64 latestKey = wasFruitless ? goal.latest - stepBack : goal.latest;
        if (!startBefore(goal, stepBack, latestKey)) {
            if (packets.isFromStart()) {
                return std::nullopt;
            }
            continue;
        }
        auto frame = decodeTo(goal, {});
        if (wasTooLittle(frame, goal)) {
            isSingleFrameRead = false;
            (void)startBefore(goal, stepBack, latestKey);
            frame = decodeTo(goal, {});
        }
        const bool isAll = packets.isFromStart() && !packets.hasDropped();
        if (isAll || (frame && frame->time <= goal.latest)) {
            return frame;
        }
        wasFruitless = true;
    }
    return std::nullopt;
}

/// Where decoding can't go on, it begins anew.
std::optional<FrameDecoder::Decoded> VideoReader::Stream::findAfterCurrent() {
    const qint64 time = current ? current->time : start;
    isSingleFrameRead = false;
    auto frame = find({time, time, time});
    while (frame && current && frame->time <= time) {
        frame = pending ? std::exchange(pending, {}) : decodeNext();
    }
    return frame;
}

/// Moves to a key frame before the goal, the last one up to `latestKey` of those at hand, or to the
/// start. False where there is none before the goal.
bool VideoReader::Stream::startBefore(const Goal &goal, qint64 stepBack, qint64 latestKey) {
    qint64 from = goal.latest;
    if (const auto duration = input.duration()) {
        from = std::min(from, start + av_rescale_q(duration->value, {1, duration->timescale},
                                                   stream.time_base));
    }
    decoder.flush();
    isCutShort = false;
    pending.reset();
    lastDecoded = std::numeric_limits<qint64>::min();
    if (from - stepBack <= start || !packets.seek(from - stepBack)) {
        if (!packets.rewind()) {
            throw MediaError(QStringLiteral("The file can't be read from its start again."));
        }
    }
    const auto key = packets.beginAtKeyFrame(latestKey);
    return packets.isFromStart() || (key && *key <= goal.latest);
}

/// `before`: the frame before the next one, where it is known.
std::optional<FrameDecoder::Decoded> VideoReader::Stream::decodeTo(const Goal &goal,
                                                                   std::optional<Decoded> before) {
    for (;;) {
        auto frame = pending ? std::exchange(pending, {}) : decodeNext(&goal);
        if (!frame) {
            return before;
        }
        if (frame->time > goal.latest) {
            if (!before) {
                return frame;
            }
            pending = std::move(frame);
            return before;
        }
        const bool isNear = goal.earliest < goal.latest && frame->time >= goal.earliest;
        const bool isLast =
            packets.readPast(goal.target) && packets.lastPresentation(goal.target) == frame->time;
        if (isNear || isLast) {
            return frame;
        }
        before = std::move(frame);
    }
}

/// A picture that nobody refers to and that comes before the one looked for. A packet can hold one
/// field, so the one just before is left alone.
bool VideoReader::Stream::maySkip(const AVPacket &packet, const Goal &goal) {
    if (packet.pts == AV_NOPTS_VALUE || decoder.nominalDuration() <= 0) {
        return false;
    }
    (void)packets.readPast(goal.target);
    const auto named = packets.lastPresentation(goal.target);
    return named && packet.pts < std::min(goal.earliest, *named) - decoder.nominalDuration();
}

/// Whether the packet holds what is looked for, so that the decoder needn't wait for those that
/// follow. Then it must begin anew, so only where key frames are close together.
bool VideoReader::Stream::isEnough(const AVPacket &packet, const Goal &goal) {
    const bool isNear =
        goal.earliest < goal.latest && packet.pts >= goal.earliest && packet.pts <= goal.latest;
    const bool isNamed =
        packets.readPast(goal.target) && packets.lastPresentation(goal.target) == packet.pts;
    return packet.pts != AV_NOPTS_VALUE && (isNear || isNamed) && hasCloseKeyframes(goal.latest);
}

/// Whether the packet that was enough held a damaged picture, so that its neighbours are needed.
bool VideoReader::Stream::wasTooLittle(const std::optional<Decoded> &frame,
                                       const Goal &goal) const {
    return isCutShort && (!frame || frame->time < goal.earliest - decoder.nominalDuration());
}

bool VideoReader::Stream::hasCloseKeyframes(qint64 time) const {
    const int key = av_index_search_timestamp(&stream, time, AVSEEK_FLAG_BACKWARD);
    const AVIndexEntry *entry = avformat_index_get_entry(&stream, key);
    const qint64 close = av_rescale_q(kCloseKeysSeconds, {1, 1}, stream.time_base);
    return entry &&
           av_index_search_timestamp(&stream, entry->timestamp + close, AVSEEK_FLAG_BACKWARD) > key;
}

std::optional<FrameDecoder::Decoded> VideoReader::Stream::decodeNext(const Goal *goal) {
    for (int sent = 0; sent < kMostFruitlessPackets;) {
        if (auto frame = decoder.receive()) {
            const bool isGuessed = packets.firstKey() && frame->time < *packets.firstKey();
            if (isGuessed || frame->time <= lastDecoded) {
                continue;
            }
            lastDecoded = frame->time;
            return frame;
        }
        if (decoder.isDrained()) {
            return std::nullopt;
        }
        input.testStop();
        const PacketHandle packet = packets.take();
        ++sent;
        const bool skips = packet && goal && maySkip(*packet, *goal);
        if (skips && unreferenced.contains(*packet)) {
            continue;
        }
        decoder.send(packet.get(), skips);
        if (packet && goal && isSingleFrameRead && isEnough(*packet, *goal)) {
            decoder.send(nullptr);
            isCutShort = true;
        }
    }
    return std::nullopt;
}

} // namespace corvane::media
