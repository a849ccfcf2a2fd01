#include "media/OutputFile.h"

#include "media/StreamExport.h"

#include <algorithm>

namespace corvane::media {

namespace {

constexpr char kWriting[] = "The output can't be written";
constexpr int kMovieTimescale = 90'000;        ///< ticks per second of edit lists
constexpr int64_t kLongestWait = AV_TIME_BASE; ///< of one stream for the others

} // namespace

StreamExport::~StreamExport() = default;

OutputFile::OutputFile(const QString &path) {
    silenceFFmpeg();
    check(avformat_alloc_output_context2(&m_context, nullptr, "mp4", nullptr), kWriting);
    const QByteArray url = QByteArrayLiteral("file:") + path.toUtf8();
    const int result = avio_open(&m_context->pb, url.constData(), AVIO_FLAG_WRITE);
    if (result < 0) {
        avformat_free_context(m_context);
        check(result, kWriting);
    }
    // Packets before the in point keep their negative times, for the edit list to hide them.
    m_context->avoid_negative_ts = AVFMT_AVOID_NEG_TS_DISABLED;
    // The lead of the pictures comes long before the first sound and isn't held back for it.
    m_context->max_interleave_delta = kLongestWait;
    // FLAC and the like were put into the standard after the library learnt to write them.
    m_context->strict_std_compliance = FF_COMPLIANCE_EXPERIMENTAL;
}

OutputFile::~OutputFile() {
    avio_closep(&m_context->pb);
    avformat_free_context(m_context);
}

AVStream &OutputFile::addStream(AVRational timeBase) {
    AVStream *stream = avformat_new_stream(m_context, nullptr);
    if (!stream) {
        throw std::bad_alloc();
    }
    stream->time_base = timeBase;
    m_tracks.push_back({timeBase});
    return *stream;
}

void OutputFile::begin() {
    AVDictionary *options = nullptr;
    av_dict_set(&options, "movflags", "use_metadata_tags", 0);
    av_dict_set(&options, "use_editlist", "1", 0);
    av_dict_set_int(&options, "movie_timescale", kMovieTimescale, 0);
    const int result = avformat_write_header(m_context, &options);
    av_dict_free(&options);
    testWritten(result, kWriting);
}

/// Damaged sources give packets without a time or out of order, which the file can't hold.
void OutputFile::repair(AVPacket &packet, Track &track) const {
    if (packet.dts == AV_NOPTS_VALUE) {
        packet.dts = packet.pts;
    }
    if (packet.dts == AV_NOPTS_VALUE) {
        packet.dts = track.lastDecoded == AV_NOPTS_VALUE ? 0 : track.lastDecoded + 1;
    }
    if (track.lastDecoded != AV_NOPTS_VALUE) {
        packet.dts = std::max(packet.dts, track.lastDecoded + 1);
    }
    packet.pts = packet.pts == AV_NOPTS_VALUE ? packet.dts : std::max(packet.pts, packet.dts);
    track.lastDecoded = packet.dts;
}

bool OutputFile::write(AVPacket &packet, const AVStream &stream) {
    Track &track = m_tracks.at(size_t(stream.index));
    packet.stream_index = stream.index;
    packet.pos = -1;
    av_packet_rescale_ts(&packet, track.timeBase, stream.time_base);
    repair(packet, track);
    const int result = av_interleaved_write_frame(m_context, &packet);
    if (result == AVERROR(EINVAL) || result == AVERROR_INVALIDDATA) {
        testWritten(0, kWriting);
        return false;
    }
    testWritten(result, kWriting);
    return true;
}

void OutputFile::finish() {
    testWritten(av_write_trailer(m_context), kWriting);
    avio_flush(m_context->pb);
    testWritten(0, kWriting);
    check(avio_closep(&m_context->pb), kWriting);
}

void OutputFile::testWritten(int result, const char *what) const {
    check(m_context->pb->error, what); // the cause, where there are both
    check(result, what);
}

} // namespace corvane::media
