#include "media/ExportSource.h"

#include <numeric>

namespace corvane::media {

namespace {

/// Timestamps that fall back by more than this begin anew; by less they are only out of order.
constexpr MediaTime kLeastNewBeginning{1, 1};

} // namespace

MediaTime mediaTime(int64_t ticks, AVRational timeBase) {
    return {ticks * timeBase.num, timeBase.den};
}

int64_t ticksOf(MediaTime time, AVRational timeBase, AVRounding rounding) {
    return av_rescale_q_rnd(time.value, {1, time.timescale}, timeBase, rounding);
}

MediaTime operator+(MediaTime left, MediaTime right) {
    const int64_t common = std::lcm(int64_t(left.timescale), int64_t(right.timescale));
    // Timescales without a common measure would leave 32 bits; a microsecond is fine enough then.
    const AVRational base{1, common <= INT32_MAX ? int(common) : 1'000'000};
    return {ticksOf(left, base) + ticksOf(right, base), base.den};
}

MediaTime operator-(MediaTime left, MediaTime right) {
    return left + MediaTime{-right.value, right.timescale};
}

ExportSource::ExportSource(const QString &path)
    : m_path(path), m_input(std::make_unique<MediaInput>(path, MediaInput::Depth::Coding)) {}

std::vector<int> ExportSource::streamsOf(AVMediaType type) const {
    std::vector<int> found;
    for (int i = 0; i < streamCount(); ++i) {
        const bool isCover = stream(i).disposition & AV_DISPOSITION_ATTACHED_PIC;
        if (stream(i).codecpar->codec_type == type && !isCover) {
            found.push_back(i);
        }
    }
    return found;
}

std::optional<int> ExportSource::video() const {
    const AVStream *picture = m_input->firstVideoStream();
    return picture ? std::optional(picture->index) : std::nullopt;
}

int ExportSource::reference() const {
    const auto picture = video();
    return picture ? *picture : streamsOf(AVMEDIA_TYPE_AUDIO).at(0);
}

bool ExportSource::read(AVPacket &packet) {
    if (m_input->read(packet)) {
        goOn(packet);
        return true;
    }
    const int fault = context().pb ? context().pb->error : 0;
    if (fault < 0 && fault != AVERROR_EOF) {
        check(fault, "The source can't be read");
    }
    return false;
}

/// The other streams take over what the first one found, so that they stay together.
void ExportSource::goOn(AVPacket &packet) {
    if (packet.dts == AV_NOPTS_VALUE) {
        return;
    }
    m_clocks.resize(std::max(m_clocks.size(), size_t(packet.stream_index) + 1));
    Clock &clock = m_clocks[size_t(packet.stream_index)];
    const AVRational base = stream(packet.stream_index).time_base;
    if (clock.end != AV_NOPTS_VALUE) {
        const MediaTime back =
            mediaTime(clock.end, base) - mediaTime(packet.dts, base) - clock.added;
        if (back > kLeastNewBeginning) {
            m_added = m_added > clock.added ? m_added : clock.added + back;
            clock.added = m_added;
        }
    }
    const int64_t added = ticksOf(clock.added, base);
    packet.dts += added;
    packet.pts += packet.pts == AV_NOPTS_VALUE ? 0 : added;
    clock.end = packet.dts + packet.duration;
}

bool ExportSource::seek(int index, MediaTime time) {
    const AVStream &wanted = stream(index);
    const int64_t ticks = ticksOf(time, wanted.time_base, AV_ROUND_DOWN);
    const int64_t begin = wanted.start_time;
    m_clocks.clear();
    m_added = {};
    if ((begin == AV_NOPTS_VALUE || ticks > begin) && m_input->seek(wanted, ticks)) {
        return false;
    }
    rewind();
    return true;
}

/// Not every format finds its own beginning again, but a file that is opened stands there.
void ExportSource::rewind() {
    m_clocks.clear();
    m_added = {};
    std::vector<AVDiscard> discards;
    discards.reserve(size_t(streamCount()));
    for (int i = 0; i < streamCount(); ++i) {
        discards.push_back(stream(i).discard);
    }
    m_input = std::make_unique<MediaInput>(m_path, MediaInput::Depth::Coding, m_stop);
    for (int i = 0; i < std::min(int(discards.size()), streamCount()); ++i) {
        m_input->context()->streams[i]->discard = discards[size_t(i)];
    }
}

void ExportSource::readOnly(std::optional<int> wanted) {
    for (int i = 0; i < streamCount(); ++i) {
        const bool reads = !wanted || *wanted == i;
        m_input->context()->streams[i]->discard = reads ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

void ExportSource::setStop(std::stop_token stop) {
    m_stop = stop;
    m_input->setStop(std::move(stop));
}

} // namespace corvane::media
