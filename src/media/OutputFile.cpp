#include "media/OutputFile.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr char kWriting[] = "The output can't be written";
constexpr char kMovieTimescale[] = "90000"; ///< ticks per second of edit lists
constexpr int64_t kMaxInterleaveDelay = AV_TIME_BASE;

} // namespace

OutputFile::OutputFile(const QString &path) {
    initializeFFmpeg();
    check(avformat_alloc_output_context2(&m_context, nullptr, "mp4", nullptr), kWriting);
    const QByteArray url = QByteArrayLiteral("file:") + path.toUtf8();
    const int result = avio_open(&m_context->pb, url.constData(), AVIO_FLAG_WRITE);
    if (result < 0) {
        avformat_free_context(m_context);
        check(result, kWriting);
    }
    // Packets before the in point keep negative timestamps, so that the edit list hides them.
    m_context->avoid_negative_ts = AVFMT_AVOID_NEG_TS_DISABLED;
    // The video from the keyframe on comes long before the first audio and doesn't wait for it.
    m_context->max_interleave_delta = kMaxInterleaveDelay;
    // FFmpeg counts FLAC and other later additions to the standard as experimental.
    m_context->strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
}

OutputFile::~OutputFile() {
    // The result matters only to `finish`, which has closed a complete file already.
    avio_closep(&m_context->pb);
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
    const int result = av_interleaved_write_frame(m_context, &packet);
    if (result == AVERROR(EINVAL) || result == AVERROR_INVALIDDATA) {
        checkWritten(0);
        return false;
    }
    checkWritten(result);
    return true;
}

void OutputFile::finish() {
    checkWritten(av_write_trailer(m_context));
    avio_flush(m_context->pb); // sets `pb->error`
    checkWritten(0);
    check(avio_closep(&m_context->pb), kWriting);
}

/// Throws if the file system rejected a write, which is the cause of other errors, or for `result`.
void OutputFile::checkWritten(int result) const {
    check(m_context->pb->error, kWriting);
    check(result, kWriting);
}

} // namespace corvane::media
