#include "media/ExportSource.h"

#include <numeric>

namespace corvane::media {

namespace {

/// A file is probed no further than this for what its streams are.
constexpr int64_t kProbeBytes = int64_t(32) << 20;
constexpr int64_t kProbeMicroseconds = 15'000'000;

bool isCover(const AVStream &stream) {
    return stream.disposition & AV_DISPOSITION_ATTACHED_PIC;
}

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

ExportSource::ExportSource(const QString &path, std::stop_token stop)
    : m_path(path), m_stop(std::move(stop)) {
    silenceFFmpeg();
    open();
}

int ExportSource::isStopped(void *source) {
    return static_cast<ExportSource *>(source)->m_stop.stop_requested() ? 1 : 0;
}

int ExportSource::checked(int result, const char *what) const {
    if (result < 0 && m_stop.stop_requested()) {
        throw Cancelled();
    }
    return check(result, what);
}

void ExportSource::open() {
    m_context.reset();
    AVFormatContext *raw = avformat_alloc_context();
    if (!raw) {
        throw std::bad_alloc();
    }
    raw->interrupt_callback = {&isStopped, this};
    raw->probesize = kProbeBytes;
    raw->max_analyze_duration = kProbeMicroseconds;
    AVDictionary *options = nullptr;
    av_dict_set(&options, "protocol_whitelist", "file", 0);
    const QByteArray url = QByteArrayLiteral("file:") + m_path.toUtf8();
    const int result = avformat_open_input(&raw, url.constData(), nullptr, &options);
    av_dict_free(&options);
    checked(result, "The file can't be opened");
    m_context.reset(raw);
    checked(avformat_find_stream_info(raw, nullptr), "The file's streams can't be read");
}

std::vector<int> ExportSource::streamsOf(AVMediaType type) const {
    std::vector<int> found;
    for (int i = 0; i < streamCount(); ++i) {
        if (stream(i).codecpar->codec_type == type && !isCover(stream(i))) {
            found.push_back(i);
        }
    }
    return found;
}

std::optional<int> ExportSource::video() const {
    const std::vector<int> found = streamsOf(AVMEDIA_TYPE_VIDEO);
    return found.empty() ? std::nullopt : std::optional(found.front());
}

int ExportSource::reference() const {
    const auto picture = video();
    return picture ? *picture : streamsOf(AVMEDIA_TYPE_AUDIO).at(0);
}

MediaTime ExportSource::start() const {
    const int64_t start = m_context->start_time;
    return {start == AV_NOPTS_VALUE ? 0 : start, AV_TIME_BASE};
}

std::optional<MediaTime> ExportSource::duration() const {
    if (m_context->duration == AV_NOPTS_VALUE || m_context->duration <= 0) {
        return std::nullopt;
    }
    return MediaTime{m_context->duration, AV_TIME_BASE};
}

bool ExportSource::read(AVPacket &packet) {
    for (;;) {
        const int result = av_read_frame(m_context.get(), &packet);
        if (m_stop.stop_requested()) {
            throw Cancelled();
        }
        if (result == 0) {
            return true;
        }
        if (result == AVERROR(EAGAIN)) {
            continue;
        }
        const int fault = m_context->pb ? m_context->pb->error : 0;
        if (fault < 0 && fault != AVERROR_EOF) {
            check(fault, "The file can't be read");
        }
        return false;
    }
}

bool ExportSource::seek(int index, MediaTime time) {
    const AVStream &wanted = stream(index);
    const int64_t ticks = ticksOf(time, wanted.time_base, AV_ROUND_DOWN);
    const int64_t begin = wanted.start_time;
    if ((begin == AV_NOPTS_VALUE || ticks > begin) &&
        avformat_seek_file(m_context.get(), index, INT64_MIN, ticks, ticks, 0) >= 0) {
        return false;
    }
    rewind();
    return true;
}

/// Not every format finds its own beginning again, but a file that is opened stands there.
void ExportSource::rewind() {
    std::vector<AVDiscard> discards;
    for (int i = 0; i < streamCount(); ++i) {
        discards.push_back(stream(i).discard);
    }
    open();
    for (size_t i = 0; i < std::min(discards.size(), size_t(m_context->nb_streams)); ++i) {
        m_context->streams[i]->discard = discards[i];
    }
}

void ExportSource::readOnly(std::optional<int> wanted) {
    for (int i = 0; i < streamCount(); ++i) {
        const bool reads = !wanted || *wanted == i;
        m_context->streams[i]->discard = reads ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

void ExportSource::setStop(std::stop_token stop) {
    m_stop = std::move(stop);
}

} // namespace corvane::media
