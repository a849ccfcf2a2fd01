#include "media/ExportSource.h"

#include <numeric>

namespace corvane::media {

namespace {

/// Timestamps that jump back by more than this have restarted; by less, they are out of order.
constexpr MediaTime kMinRestart{1, 1};

} // namespace

MediaTime mediaTime(int64_t ticks, AVRational timeBase) {
    return {ticks * timeBase.num, timeBase.den};
}

int64_t ticksOf(MediaTime time, AVRational timeBase, AVRounding rounding) {
    return av_rescale_q_rnd(time.value, {1, time.timescale}, timeBase, rounding);
}

MediaTime operator+(MediaTime left, MediaTime right) {
    const int64_t common = std::lcm(int64_t(left.timescale), int64_t(right.timescale));
    // If the common timescale exceeds 32 bits, microseconds are precise enough.
    const AVRational base{1, common <= INT32_MAX ? int(common) : 1'000'000};
    return {ticksOf(left, base) + ticksOf(right, base), base.den};
}

MediaTime operator-(MediaTime left, MediaTime right) {
    return left + MediaTime{-right.value, right.timescale};
}

ExportSource::ExportSource(const QString &path)
    : m_path(path), m_input(std::make_unique<MediaInput>(path, MediaInput::Depth::Coding)) {}

std::vector<int> ExportSource::streamsOf(AVMediaType type) const {
    std::vector<int> indexes;
    for (const AVStream *stream : allStreams(context())) {
        const bool isAttached = stream->disposition & AV_DISPOSITION_ATTACHED_PIC;
        if (stream->codecpar->codec_type == type && !isAttached) {
            indexes.push_back(stream->index);
        }
    }
    return indexes;
}

std::optional<int> ExportSource::video() const {
    const AVStream *stream = firstVideoStream(context());
    return stream ? std::optional(stream->index) : std::nullopt;
}

int ExportSource::reference() const {
    const auto index = video();
    return index ? *index : streamsOf(AVMEDIA_TYPE_AUDIO).at(0);
}

bool ExportSource::read(AVPacket &packet) {
    const bool hasPacket = m_input->read(packet);
    // Also if there is a packet: demuxers return incomplete packets and skip unreadable ones.
    check(AVERROR(m_input->readFault()), "The source can't be read");
    if (hasPacket) {
        continueTimestamps(packet);
    }
    return hasPacket;
}

/// The first stream to restart determines the offset, which the others adopt to stay in sync.
void ExportSource::continueTimestamps(AVPacket &packet) {
    if (packet.dts == AV_NOPTS_VALUE) {
        return;
    }
    m_clocks.resize(std::max(m_clocks.size(), size_t(packet.stream_index) + 1));
    StreamClock &clock = m_clocks[size_t(packet.stream_index)];
    const AVRational base = stream(packet.stream_index).time_base;
    if (clock.end != AV_NOPTS_VALUE) {
        const MediaTime jump =
            mediaTime(clock.end, base) - mediaTime(packet.dts, base) - clock.offset;
        if (jump > kMinRestart) {
            m_offset = m_offset > clock.offset ? m_offset : clock.offset + jump;
            clock.offset = m_offset;
        }
    }
    const int64_t offset = ticksOf(clock.offset, base);
    packet.dts += offset;
    packet.pts += packet.pts == AV_NOPTS_VALUE ? 0 : offset;
    clock.end = packet.dts + packet.duration;
}

void ExportSource::resetClocks() {
    m_clocks.clear();
    m_offset = {};
}

bool ExportSource::seek(int index, MediaTime time) {
    const AVStream &target = stream(index);
    const int64_t ticks = ticksOf(time, target.time_base, AV_ROUND_DOWN);
    const int64_t begin = target.start_time;
    resetClocks();
    if ((begin == AV_NOPTS_VALUE || ticks > begin) && m_input->seek(target, ticks)) {
        return false;
    }
    rewind();
    return true;
}

/// Opens the file again, because not every container can seek to its start.
void ExportSource::rewind() {
    resetClocks();
    std::vector<AVDiscard> discards;
    for (const AVStream *stream : allStreams(context())) {
        discards.push_back(stream->discard);
    }
    m_input = std::make_unique<MediaInput>(m_path, MediaInput::Depth::Coding, m_stop);
    const auto streams = allStreams(context());
    for (size_t index = 0; index < std::min(discards.size(), streams.size()); ++index) {
        streams[index]->discard = discards[index];
    }
}

void ExportSource::selectStream(std::optional<int> index) {
    for (AVStream *stream : allStreams(context())) {
        const bool isSelected = !index || *index == stream->index;
        stream->discard = isSelected ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

void ExportSource::setStop(std::stop_token stop) {
    m_stop = stop;
    m_input->setStop(std::move(stop));
}

} // namespace corvane::media
