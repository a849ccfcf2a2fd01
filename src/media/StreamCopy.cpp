#include "media/StreamCopy.h"

#include "media/SourceMetadata.h"

namespace corvane::media {

namespace {

/// A sound's decoder needs some packets before the first sample that is heard.
constexpr MediaTime kSoundLead{1, 10};

MediaTime timeOf(const AVPacket &packet, AVRational timeBase) {
    return mediaTime(packet.pts == AV_NOPTS_VALUE ? packet.dts : packet.pts, timeBase);
}

/// The tag that an MPEG-4 file gives the codec, the source's own where that is one of them.
uint32_t tagFor(const AVCodecParameters &codec, const AVOutputFormat &format) {
    if (codec.codec_id == AV_CODEC_ID_HEVC && codec.codec_tag != MKTAG('h', 'e', 'v', '1')) {
        return MKTAG('h', 'v', 'c', '1'); // the one that every player takes
    }
    return av_codec_get_id(format.codec_tag, codec.codec_tag) == codec.codec_id ? codec.codec_tag
                                                                                : 0;
}

void copySideData(const AVStream &source, AVStream &output) {
    for (int i = 0; i < source.nb_side_data; ++i) {
        const AVPacketSideData &data = source.side_data[i];
        if (uint8_t *copy = av_stream_new_side_data(&output, data.type, data.size)) {
            std::copy_n(data.data, data.size, copy);
        }
    }
}

} // namespace

bool StreamCopy::isPossible(const AVStream &stream) {
    const AVOutputFormat *format = av_guess_format("mp4", nullptr, nullptr);
    const AVCodecParameters &codec = *stream.codecpar;
    if (codec.codec_type == AVMEDIA_TYPE_DATA) {
        return codec.codec_tag == MKTAG('g', 'p', 'm', 'd');
    }
    return avformat_query_codec(format, codec.codec_id, FF_COMPLIANCE_NORMAL) == 1;
}

StreamCopy::StreamCopy(const ExportSource &source, int stream, const ExportCut &cut,
                       OutputFile &output)
    : m_cut(cut),
      m_output(output),
      m_stream(output.addStream(source.stream(stream).time_base)),
      m_type(source.stream(stream).codecpar->codec_type),
      m_timeBase(source.stream(stream).time_base),
      m_shift(ticksOf(cut.zero, m_timeBase)),
      m_key(source.video() == stream ? cut.key : std::nullopt),
      m_hasBegun(cut.isWhole) {
    const AVStream &from = source.stream(stream);
    check(avcodec_parameters_copy(m_stream.codecpar, from.codecpar), "A stream can't be copied");
    m_stream.codecpar->codec_tag = tagFor(*from.codecpar, *output.context().oformat);
    m_stream.avg_frame_rate = from.avg_frame_rate;
    m_stream.r_frame_rate = from.r_frame_rate;
    m_stream.sample_aspect_ratio = from.sample_aspect_ratio;
    copySideData(from, m_stream);
    sourceMetadata::copyStream(from, m_stream);
}

void StreamCopy::take(AVPacket &packet) {
    if (m_isDone || (packet.pts == AV_NOPTS_VALUE && packet.dts == AV_NOPTS_VALUE)) {
        return;
    }
    testOrder(packet);
    const MediaTime time = timeOf(packet, m_timeBase);
    m_hasBegun = m_hasBegun || isKnownKey(packet);
    if (m_hasBegun) {
        takeInCut(packet, time);
    } else {
        takeBeforeCut(packet, time);
    }
}

/// Some formats tell only in which order frames are decoded. Where they are shown in another one,
/// it takes a decoder to find that out.
void StreamCopy::testOrder(const AVPacket &packet) const {
    const bool isKey = packet.flags & AV_PKT_FLAG_KEY;
    if (m_type == AVMEDIA_TYPE_VIDEO && isKey && packet.pts == AV_NOPTS_VALUE &&
        m_stream.codecpar->video_delay > 0) {
        throw UnsupportedSource(
            QStringLiteral("The source doesn't tell when its frames are shown."));
    }
}

/// The key frame that the cut was found to need, so that nothing has to wait for it to be reached.
bool StreamCopy::isKnownKey(const AVPacket &packet) const {
    const int64_t time = packet.pts == AV_NOPTS_VALUE ? packet.dts : packet.pts;
    return m_key && (packet.flags & AV_PKT_FLAG_KEY) && time >= *m_key;
}

void StreamCopy::takeBeforeCut(AVPacket &packet, MediaTime time) {
    const bool isPicture = m_type == AVMEDIA_TYPE_VIDEO;
    const MediaTime end = isPicture ? time : time + mediaTime(packet.duration, m_timeBase);
    if (end > m_cut.zero || (isPicture && time >= m_cut.zero)) {
        // A key frame just at the cut needs nothing before it.
        if (isPicture && (packet.flags & AV_PKT_FLAG_KEY) && time <= m_cut.zero) {
            m_held.clear();
        }
        writeHeld();
        m_hasBegun = true;
        takeInCut(packet, time);
        return;
    }
    if (isPicture && (packet.flags & AV_PKT_FLAG_KEY)) {
        m_held.clear();
    }
    while (!isPicture && !m_held.empty() &&
           timeOf(*m_held.front(), m_timeBase) + kSoundLead < m_cut.zero) {
        m_held.pop_front();
    }
    const bool isUseless =
        m_key || (isPicture && m_held.empty() && !(packet.flags & AV_PKT_FLAG_KEY));
    if (!isUseless && m_type != AVMEDIA_TYPE_DATA) {
        hold(packet);
    }
}

/// Frames of after the cut may be needed by frames of the cut that follow them in the file, so they
/// wait until such a one comes.
void StreamCopy::takeInCut(AVPacket &packet, MediaTime time) {
    const int64_t decoded = packet.dts == AV_NOPTS_VALUE ? packet.pts : packet.dts;
    m_isDone = m_cut.isPastLast(mediaTime(decoded, m_timeBase));
    if (m_isDone) {
        m_held.clear();
        return;
    }
    hold(packet);
    if (!m_cut.isPastLast(time)) {
        writeHeld();
    }
}

void StreamCopy::hold(AVPacket &packet) {
    m_held.push_back(makePacket());
    av_packet_move_ref(m_held.back().get(), &packet);
}

void StreamCopy::writeHeld() {
    for (const PacketHandle &packet : m_held) {
        for (int64_t *time : {&packet->pts, &packet->dts}) {
            *time = *time == AV_NOPTS_VALUE ? AV_NOPTS_VALUE : *time - m_shift;
        }
        m_hasWritten = m_output.write(*packet, m_stream) || m_hasWritten;
    }
    m_held.clear();
}

/// What is still held comes after the cut, or the file ended before it.
void StreamCopy::finish() {
    m_held.clear();
    m_isDone = true;
}

} // namespace corvane::media
