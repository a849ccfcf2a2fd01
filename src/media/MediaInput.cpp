#include "media/MediaInput.h"

#include "media/HeaderMemory.h"
#include "platform/FileSystem.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <mutex>

namespace corvane::media {

namespace {

/// The containers of film and sound, by the names that FFmpeg knows them by. What reads other files
/// on its own (playlists, concatenations, picture series) and what is text stays out.
constexpr char kContainers[] =
    "mov,matroska,avi,mpegts,mpeg,mxf,mxf_opatom,asf,flv,ogg,gxf,dv,wtv,nut,ivf,mpegvideo,m4v,h264,"
    "hevc,obu,mjpeg,vc1,dirac,rm,wav,w64,aiff,au,caf,mp3,aac,ac3,eac3,dts,flac,amr,tta,wv,ape";

constexpr qint64 kProbedBytes = 5'000'000;
constexpr qint64 kProbedTime = 5 * qint64(AV_TIME_BASE);
/// No honest frame, packet or table of a file is larger.
constexpr size_t kLargestBlock = size_t(512) << 20;
/// A programme stream of a whole transponder has about a hundred.
constexpr int kMostStreams = 256;
/// Before the first packet. Nothing but the elements of a Matroska file, two bytes each, takes much
/// more memory than the bytes it is read from; the tables of QuickTime are looked at before.
constexpr qint64 kMostHeaderBytes = qint64(1) << 30;
constexpr qint64 kMostMatroskaHeaderBytes = qint64(64) << 20;
constexpr double kHighestRate = 1000;
/// In a row; then the rest counts as lost.
constexpr int kMostReadErrors = 64;

void prepareLibrary() {
    silenceFFmpeg();
    static std::once_flag once;
    std::call_once(once, [] { av_max_alloc(kLargestBlock); });
}

/// Opening a FIFO would wait for its writer. What a header claims is looked at before it is given.
void testFile(const QString &path, const std::stop_token &stop) {
    try {
        const FileStatus status = fileSystem().status(path);
        if (status.type != FileType::Regular) {
            throw MediaError(QStringLiteral("It is not a regular file."));
        }
        if (estimatedHeaderMemory(path, stop) > allowedHeaderMemory(status.size)) {
            throw MediaError(QStringLiteral("Its header claims more than the file can hold."));
        }
    } catch (const FileError &error) {
        throw MediaError(QStringLiteral("Cannot open the file: ") + error.description());
    }
}

} // namespace

bool isVideo(const AVStream &stream) {
    return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
           (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
}

AVRational nominalRate(const AVStream &stream) {
    for (const AVRational rate : {stream.avg_frame_rate, stream.r_frame_rate}) {
        if (rate.num > 0 && rate.den > 0 && av_q2d(rate) <= kHighestRate) {
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
    testStop();
    open(path);
    if (!headerTells(depth)) {
        // What it can't find out stays unknown, which is no failure.
        (void)avformat_find_stream_info(m_context.get(), nullptr);
        testStop();
    }
    findStartTime();
    completeTimestamps();
}

MediaInput::~MediaInput() = default;

void MediaInput::open(const QString &path) {
    prepareLibrary();
    testFile(path, m_stop);
    AVFormatContext *context = avformat_alloc_context();
    if (!context) {
        throw std::bad_alloc();
    }
    context->interrupt_callback = {.callback = &MediaInput::isStopped, .opaque = this};
    context->protocol_whitelist = av_strdup("file");
    context->format_whitelist = av_strdup(kContainers);
    context->max_streams = kMostStreams;
    context->probesize = kProbedBytes;
    context->max_analyze_duration = kProbedTime;
    const QByteArray url = "file:" + path.toUtf8(); // never taken for an address
    m_opened = context;
    const int result = avformat_open_input(&context, url.constData(), nullptr, nullptr);
    m_opened = nullptr;
    m_context.reset(context); // null where it failed, and freed then
    testStop();
    if (m_isHeaderTooLong) {
        throw MediaError(QStringLiteral("Its header is too long."));
    }
    check(result, "Cannot open the file");
}

/// Looking into the packets costs more than all else, so it is left out where nothing depends on
/// it: QuickTime and MPEG-4 tell everything up front.
bool MediaInput::headerTells(Depth depth) const {
    const bool isQuickTimeFile = isQuickTime(*m_context);
    if (depth == Depth::Coding || (depth == Depth::Timestamps && !isQuickTimeFile) ||
        (m_context->ctx_flags & AVFMTCTX_NOHEADER) != 0 || m_context->nb_streams == 0) {
        return false;
    }
    for (unsigned index = 0; index < m_context->nb_streams; ++index) {
        const AVStream &stream = *m_context->streams[index];
        const AVCodecParameters &codec = *stream.codecpar;
        const bool isSized = codec.width > 0 && codec.height > 0;
        const bool isRated = isQuickTimeFile || stream.avg_frame_rate.num > 0;
        const bool isMedia =
            codec.codec_type == AVMEDIA_TYPE_VIDEO || codec.codec_type == AVMEDIA_TYPE_AUDIO;
        if ((isMedia && codec.codec_id == AV_CODEC_ID_NONE) ||
            (isVideo(stream) && !(isSized && isRated))) {
            return false;
        }
    }
    return true;
}

AVStream *MediaInput::firstVideoStream() const {
    for (unsigned index = 0; index < m_context->nb_streams; ++index) {
        if (isVideo(*m_context->streams[index])) {
            return m_context->streams[index];
        }
    }
    return nullptr;
}

/// The earliest begin of a stream of pictures or sound.
void MediaInput::findStartTime() {
    if (m_context->start_time != AV_NOPTS_VALUE) {
        m_startTime = m_context->start_time;
        return;
    }
    qint64 earliest = std::numeric_limits<qint64>::max();
    for (unsigned index = 0; index < m_context->nb_streams; ++index) {
        const AVStream &stream = *m_context->streams[index];
        const auto type = stream.codecpar->codec_type;
        if (stream.start_time != AV_NOPTS_VALUE &&
            (isVideo(stream) || type == AVMEDIA_TYPE_AUDIO)) {
            earliest = std::min(earliest, qint64(av_rescale_q(stream.start_time, stream.time_base,
                                                              kContainerTimeBase)));
        }
    }
    m_startTime = earliest == std::numeric_limits<qint64>::max() ? 0 : earliest;
}

/// MPEG program streams leave out presentation times that follow from the decoding times of the
/// next pictures. The library completes them, rightly for codecs whose pictures wait for one other.
void MediaInput::completeTimestamps() {
    const AVStream *video = firstVideoStream();
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
    for (unsigned index = 0; index < m_context->nb_streams; ++index) {
        const AVStream &stream = *m_context->streams[index];
        if (stream.duration > 0) {
            longest = std::max(longest, qint64(av_rescale_q(stream.duration, stream.time_base,
                                                            kContainerTimeBase)));
        }
    }
    return longest > 0 ? std::optional(MediaTime{longest, AV_TIME_BASE}) : std::nullopt;
}

bool MediaInput::read(AVPacket &packet) {
    av_packet_unref(&packet);
    for (int errors = 0; errors < kMostReadErrors; ++errors) {
        const int result = av_read_frame(m_context.get(), &packet);
        testStop();
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
    testStop();
    return result >= 0;
}

/// A search by time in a stream without an index ends somewhere after the first packet.
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

void MediaInput::testStop() const {
    if (m_stop.stop_requested()) {
        throw Cancelled();
    }
}

bool MediaInput::readsTooMuch() const {
    if (!m_opened || !m_opened->iformat || !m_opened->pb || isQuickTime(*m_opened)) {
        return false;
    }
    const bool isMatroska = std::strncmp(m_opened->iformat->name, "matroska", 8) == 0;
    return m_opened->pb->bytes_read > (isMatroska ? kMostMatroskaHeaderBytes : kMostHeaderBytes);
}

int MediaInput::isStopped(void *asked) {
    auto *input = static_cast<MediaInput *>(asked);
    input->m_isHeaderTooLong = input->m_isHeaderTooLong || input->readsTooMuch();
    return input->m_stop.stop_requested() || input->m_isHeaderTooLong ? 1 : 0;
}

} // namespace corvane::media
