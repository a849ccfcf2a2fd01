#include "media/OutputFile.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr char kWriting[] = "The output can't be written";
constexpr char kMovieTimescale[] = "90000"; ///< ticks per second of edit lists
constexpr int64_t kMaxInterleaveDelay = AV_TIME_BASE;
/// The muxer merges some audio packets and rounds durations, so the last packet read back may begin
/// this much earlier than the last packet written.
constexpr double kReadBackTolerance = 0.1; // seconds

/// Performs a file operation; throws `MediaError` with the system's text if it fails.
template <typename Call> auto writing(Call call) {
    try {
        return call();
    } catch (const FileError &error) {
        throw MediaError(QLatin1String(kWriting) + QStringLiteral(": ") + error.description());
    }
}

/// Whether the stream's packets from `time`, in seconds, can be read up to one that begins at most
/// the tolerance earlier, and none of them is incomplete.
bool isReadableToEnd(MediaInput &input, const AVStream &stream, double time) {
    for (AVStream *other : allStreams(*input.context())) {
        other->discard = other == &stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
    if (!input.seek(stream, int64_t(time / av_q2d(stream.time_base))) && !input.rewind(stream)) {
        return false;
    }
    const PacketHandle packet = makePacket();
    int64_t last = AV_NOPTS_VALUE;
    while (input.read(*packet)) {
        if (packet->flags & AV_PKT_FLAG_CORRUPT) {
            return false;
        }
        last = packet->stream_index == stream.index ? std::max(last, packet->pts) : last;
    }
    return input.readFault() == 0 && last != AV_NOPTS_VALUE &&
           double(last) * av_q2d(stream.time_base) + kReadBackTolerance >= time;
}

} // namespace

OutputFile::OutputFile(const QString &path)
    : m_path(path), m_io(writing([&] { return std::make_unique<OutputIO>(path); })) {
    initializeFFmpeg();
    check(avformat_alloc_output_context2(&m_context, nullptr, "mp4", nullptr), kWriting);
    m_context->pb = m_io->context();
    // Packets before the in point keep negative timestamps, so that the edit list hides them.
    m_context->avoid_negative_ts = AVFMT_AVOID_NEG_TS_DISABLED;
    // The video from the keyframe on comes long before the first audio and doesn't wait for it.
    m_context->max_interleave_delta = kMaxInterleaveDelay;
    // FFmpeg counts FLAC and other later additions to the standard as experimental.
    m_context->strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
}

OutputFile::~OutputFile() {
    avformat_free_context(m_context);
}

AVStream &OutputFile::addStream(AVRational timeBase) {
    AVStream *stream = allocated(avformat_new_stream(m_context, nullptr));
    stream->time_base = timeBase;
    m_streams.push_back({timeBase});
    return *stream;
}

void OutputFile::begin() {
    Dictionary options;
    setEntry(options.entries, "movflags", "use_metadata_tags");
    setEntry(options.entries, "use_editlist", "1");
    setEntry(options.entries, "movie_timescale", kMovieTimescale);
    checkWritten(avformat_write_header(m_context, &options.entries));
}

/// Replaces missing and decreasing timestamps of damaged sources, which the muxer rejects.
void OutputFile::repairTimestamps(AVPacket &packet, OutputStream &stream) const {
    if (packet.dts == AV_NOPTS_VALUE) {
        packet.dts = packet.pts;
    }
    if (packet.dts == AV_NOPTS_VALUE) {
        packet.dts = stream.lastDts == AV_NOPTS_VALUE ? 0 : stream.lastDts + 1;
    }
    if (stream.lastDts != AV_NOPTS_VALUE) {
        packet.dts = std::max(packet.dts, stream.lastDts + 1);
    }
    packet.pts = packet.pts == AV_NOPTS_VALUE ? packet.dts : std::max(packet.pts, packet.dts);
    stream.lastDts = packet.dts;
}

bool OutputFile::write(AVPacket &packet, const AVStream &stream) {
    OutputStream &written = m_streams.at(size_t(stream.index));
    packet.stream_index = stream.index;
    packet.pos = -1;
    av_packet_rescale_ts(&packet, written.timeBase, stream.time_base);
    repairTimestamps(packet, written);
    const int64_t pts = packet.pts;
    const int result = av_interleaved_write_frame(m_context, &packet);
    if (result == AVERROR(EINVAL) || result == AVERROR_INVALIDDATA) {
        checkWritten(0);
        return false;
    }
    checkWritten(result);
    written.lastPts = std::max(written.lastPts, pts);
    return true;
}

void OutputFile::finish(const std::stop_token &stop) {
    checkWritten(av_write_trailer(m_context));
    avio_flush(m_context->pb); // sets `pb->error`
    checkWritten(0);
    writing([this] { m_io->close(); });
    readBack(stop);
}

void OutputFile::readBack(const std::stop_token &stop) const {
    bool isComplete = false;
    try {
        MediaInput input(m_path, MediaInput::Depth::Facts, stop);
        isComplete = avio_size(input.context()->pb) == m_io->size() && hasAllPackets(input);
    } catch (const MediaError &) {
        // Its header is missing or damaged.
    }
    if (!isComplete) {
        throw MediaError(QStringLiteral("The finished file is incomplete: its end can't be read "
                                        "back. Check the drive, then try again."));
    }
}

/// The muxer leaves out streams without packets and appends its own after the others. Packets that
/// begin before 0 are hidden and may not be returned.
bool OutputFile::hasAllPackets(MediaInput &input) const {
    const auto found = allStreams(*input.context());
    const double duration = input.duration().value_or(MediaTime()).seconds();
    size_t index = 0;
    for (const AVStream *stream : allStreams(*m_context)) {
        const int64_t last = m_streams.at(size_t(stream->index)).lastPts;
        if (last == AV_NOPTS_VALUE) {
            continue;
        }
        const AVMediaType type = stream->codecpar->codec_type;
        const bool isCompared = type == AVMEDIA_TYPE_VIDEO || type == AVMEDIA_TYPE_AUDIO;
        const double time = double(last) * av_q2d(stream->time_base);
        if (isCompared && time >= 0 &&
            (index >= found.size() || found[index]->codecpar->codec_type != type ||
             duration + kReadBackTolerance < time ||
             !isReadableToEnd(input, *found[index], time))) {
            return false;
        }
        ++index;
    }
    return true;
}

/// Throws if the file system rejected a write, which is the cause of other errors, or for `result`.
void OutputFile::checkWritten(int result) const {
    check(m_context->pb->error, kWriting);
    check(result, kWriting);
}

} // namespace corvane::media
