#include "media/MediaInput.h"

#include "media/HeaderMemory.h"
#include "platform/Cancellation.h"
#include "platform/FileSystem.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace corvane::media {

namespace {

/// FFmpeg's names of the accepted containers. Formats that open other files (playlists,
/// concatenations, image sequences) and text formats are excluded.
constexpr char kContainers[] =
    "mov,matroska,avi,mpegts,mpeg,mxf,mxf_opatom,asf,flv,ogg,gxf,dv,wtv,nut,ivf,mpegvideo,m4v,h264,"
    "hevc,obu,mjpeg,vc1,dirac,rm,wav,w64,aiff,au,caf,mp3,aac,ac3,eac3,dts,flac,amr,tta,wv,ape";

constexpr qint64 kProbedBytes = 5'000'000;
constexpr qint64 kProbedTime = 5 * qint64(AV_TIME_BASE);
/// The transport stream of an entire transponder has about a hundred.
constexpr int kMaxStreams = 256;
/// Limits of the bytes before the first packet. Only Matroska elements, of two bytes each, take
/// much more memory than the bytes they are read from. QuickTime tables are checked beforehand.
constexpr qint64 kMaxHeaderBytes = qint64(1) << 30;
constexpr qint64 kMaxMatroskaHeaderBytes = qint64(64) << 20;
constexpr double kMaxFrameRate = 1000;
/// After this many consecutive read errors, the rest of the file counts as lost.
constexpr int kMaxReadErrors = 64;

/// Opens a file. Throws unless it is a regular file (opening a FIFO would wait for its writer)
/// whose header tables fit into the memory allowed for them.
std::unique_ptr<InputIO> openFile(const QString &path, const AVIOInterruptCB &interrupt,
                                  const std::stop_token &stop) {
    try {
        const FileStatus status = fileSystem().status(path);
        if (status.type != FileType::Regular) {
            throw MediaError(QStringLiteral("It is not a regular file."));
        }
        if (estimatedHeaderMemory(path, stop) > allowedHeaderMemory(status.size)) {
            throw MediaError(QStringLiteral("Its header claims more than the file can hold."));
        }
        return std::make_unique<InputIO>(path, interrupt);
    } catch (const FileError &error) {
        throw MediaError(QStringLiteral("Cannot open the file: ") + error.description());
    }
}

} // namespace

bool isVideo(const AVStream &stream) {
    return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
           (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
}

AVStream *firstVideoStream(const AVFormatContext &container) {
    const auto streams = allStreams(container);
    const auto video = std::ranges::find_if(streams, [](auto *stream) { return isVideo(*stream); });
    return video == streams.end() ? nullptr : *video;
}

AVRational nominalRate(const AVStream &stream) {
    for (const AVRational rate : {stream.avg_frame_rate, stream.r_frame_rate}) {
        if (rate.num > 0 && rate.den > 0 && av_q2d(rate) <= kMaxFrameRate) {
            return rate;
        }
    }
    return {0, 1};
}

bool isQuickTime(const AVFormatContext &container) {
    return std::strncmp(container.iformat->name, "mov", 3) == 0;
}

MediaInput::MediaInput(const QString &path, Depth depth, std::stop_token stop)
    : m_stop(std::move(stop)) {
    throwIfStopped();
    open(path);
    if (!isHeaderSufficient(depth)) {
        const int result = avformat_find_stream_info(m_context.get(), nullptr);
        throwIfStopped(); // the cause of AVERROR_EXIT
        if (result == AVERROR_EXIT) {
            check(result, "Cannot read the streams");
        }
        // All other codes, such as AVERROR_EOF and AVERROR_INVALIDDATA, leave facts unknown.
    }
    findStartTime();
    completeTimestamps();
}

MediaInput::~MediaInput() = default;

void MediaInput::open(const QString &path) {
    initializeFFmpeg();
    InputHandle opening(allocated(avformat_alloc_context()));
    opening->interrupt_callback = {.callback = &MediaInput::shouldInterrupt, .opaque = this};
    m_io = openFile(path, opening->interrupt_callback, m_stop);
    opening->pb = m_io->context();
    // Without a list, everything would be allowed.
    opening->protocol_whitelist = allocated(av_strdup("file"));
    opening->format_whitelist = allocated(av_strdup(kContainers));
    opening->max_streams = kMaxStreams;
    opening->probesize = kProbedBytes;
    opening->max_analyze_duration = kProbedTime;
    const QByteArray url = "file:" + path.toUtf8(); // so that no path is taken for a URL
    m_opening = opening.release();
    AVFormatContext *context = m_opening;
    const int result = avformat_open_input(&context, url.constData(), nullptr, nullptr);
    m_opening = nullptr;
    m_context.reset(context); // freed by FFmpeg and null after a failure
    throwIfStopped();
    if (m_hasLongHeader) {
        throw MediaError(QStringLiteral("Its header is too long."));
    }
    check(result, "Cannot open the file");
}

/// Whether the header alone provides the required depth. Reading packets costs more than everything
/// else, so it is avoided if possible. Headers of QuickTime and MPEG-4 files are complete.
bool MediaInput::isHeaderSufficient(Depth depth) const {
    const bool isQuickTimeFile = isQuickTime(*m_context);
    if (depth == Depth::Coding || (depth == Depth::Timestamps && !isQuickTimeFile) ||
        (m_context->ctx_flags & AVFMTCTX_NOHEADER) != 0 || m_context->nb_streams == 0) {
        return false;
    }
    for (const AVStream *stream : allStreams(*m_context)) {
        const AVCodecParameters &codec = *stream->codecpar;
        const bool isSized = codec.width > 0 && codec.height > 0;
        const bool isRated = isQuickTimeFile || stream->avg_frame_rate.num > 0;
        const bool isMedia =
            codec.codec_type == AVMEDIA_TYPE_VIDEO || codec.codec_type == AVMEDIA_TYPE_AUDIO;
        if ((isMedia && codec.codec_id == AV_CODEC_ID_NONE) ||
            (isVideo(*stream) && !(isSized && isRated))) {
            return false;
        }
    }
    return true;
}

/// The earliest start of a video or audio stream.
void MediaInput::findStartTime() {
    if (m_context->start_time != AV_NOPTS_VALUE) {
        m_startTime = m_context->start_time;
        return;
    }
    qint64 earliest = std::numeric_limits<qint64>::max();
    for (const AVStream *stream : allStreams(*m_context)) {
        const auto type = stream->codecpar->codec_type;
        if (stream->start_time != AV_NOPTS_VALUE &&
            (isVideo(*stream) || type == AVMEDIA_TYPE_AUDIO)) {
            earliest = std::min(earliest, qint64(av_rescale_q(stream->start_time, stream->time_base,
                                                              kContainerTimeBase)));
        }
    }
    m_startTime = earliest == std::numeric_limits<qint64>::max() ? 0 : earliest;
}

/// MPEG program streams leave out PTS that follow from the DTS of the next frames. FFmpeg completes
/// them correctly for codecs that reorder a frame by at most one other.
void MediaInput::completeTimestamps() {
    const AVStream *video = firstVideoStream(*m_context);
    const AVCodecID codec = video ? video->codecpar->codec_id : AV_CODEC_ID_NONE;
    if (codec == AV_CODEC_ID_MPEG1VIDEO || codec == AV_CODEC_ID_MPEG2VIDEO ||
        codec == AV_CODEC_ID_MPEG4) {
        m_context->flags |= AVFMT_FLAG_GENPTS;
    }
}

std::optional<MediaTime> MediaInput::duration() const {
    if (m_context->duration > 0) {
        return MediaTime{m_context->duration, AV_TIME_BASE};
    }
    qint64 longest = 0;
    for (const AVStream *stream : allStreams(*m_context)) {
        if (stream->duration > 0) {
            longest = std::max(longest, qint64(av_rescale_q(stream->duration, stream->time_base,
                                                            kContainerTimeBase)));
        }
    }
    return longest > 0 ? std::optional(MediaTime{longest, AV_TIME_BASE}) : std::nullopt;
}

bool MediaInput::read(AVPacket &packet) {
    av_packet_unref(&packet);
    for (int errors = 0; errors < kMaxReadErrors; ++errors) {
        const int result = av_read_frame(m_context.get(), &packet);
        throwIfStopped();
        if (result >= 0) {
            return true;
        }
        if (result == AVERROR_EOF || (m_context->pb && avio_feof(m_context->pb))) {
            return false;
        }
    }
    return false;
}

bool MediaInput::seek(const AVStream &stream, qint64 timestamp) {
    const int result =
        av_seek_frame(m_context.get(), stream.index, timestamp, AVSEEK_FLAG_BACKWARD);
    throwIfStopped();
    return result >= 0;
}

/// Bare streams are rewound by bytes: without an index, a seek by time ends after the first packet.
bool MediaInput::rewind(const AVStream &stream) {
    const qint64 first = stream.start_time == AV_NOPTS_VALUE ? 0 : stream.start_time;
    const auto toFirstByte = [this] {
        return av_seek_frame(m_context.get(), -1, 0, AVSEEK_FLAG_BYTE) >= 0;
    };
    const bool isBareStream =
        (m_context->iformat->flags & (AVFMT_TS_DISCONT | AVFMT_NOTIMESTAMPS)) != 0;
    return isBareStream ? toFirstByte() || seek(stream, first)
                        : seek(stream, first) || toFirstByte();
}

void MediaInput::throwIfStopped() const {
    throwIfStopRequested(m_stop);
}

bool MediaInput::isHeaderTooLong() const {
    if (!m_opening || !m_opening->iformat || !m_opening->pb || isQuickTime(*m_opening)) {
        return false;
    }
    const bool isMatroska = std::strncmp(m_opening->iformat->name, "matroska", 8) == 0;
    return m_opening->pb->bytes_read > (isMatroska ? kMaxMatroskaHeaderBytes : kMaxHeaderBytes);
}

int MediaInput::shouldInterrupt(void *self) {
    auto *input = static_cast<MediaInput *>(self);
    input->m_hasLongHeader = input->m_hasLongHeader || input->isHeaderTooLong();
    return input->m_stop.stop_requested() || input->m_hasLongHeader ? 1 : 0;
}

} // namespace corvane::media
