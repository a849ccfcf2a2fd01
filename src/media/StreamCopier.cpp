#include "media/StreamCopier.h"

#include "media/SourceMetadata.h"

namespace corvane::media {

namespace {

/// Audio decoders need some packets before the first sample.
constexpr MediaTime kAudioPreroll{1, 10};

/// Codec tag for an MPEG-4 file: the source's own if valid there, else 0 for the default.
uint32_t tagFor(const AVCodecParameters &codec, const AVOutputFormat &format) {
    if (codec.codec_id == AV_CODEC_ID_HEVC && codec.codec_tag != MKTAG('h', 'e', 'v', '1')) {
        return MKTAG('h', 'v', 'c', '1'); // supported by every player
    }
    return av_codec_get_id(format.codec_tag, codec.codec_tag) == codec.codec_id ? codec.codec_tag
                                                                                : 0;
}

} // namespace

bool StreamCopier::isPossible(const AVStream &stream) {
    const AVOutputFormat *format = av_guess_format("mp4", nullptr, nullptr);
    const AVCodecParameters &codec = *stream.codecpar;
    if (codec.codec_type == AVMEDIA_TYPE_DATA) {
        return codec.codec_tag == MKTAG('g', 'p', 'm', 'd');
    }
    return avformat_query_codec(format, codec.codec_id, FF_COMPLIANCE_NORMAL) == 1;
}

StreamCopier::StreamCopier(const ExportSource &source, int stream, const ExportCut &cut,
                           OutputFile &output)
    : m_cut(cut),
      m_output(output),
      m_stream(output.addStream(source.stream(stream).time_base)),
      m_type(source.stream(stream).codecpar->codec_type),
      m_timeBase(source.stream(stream).time_base),
      m_origin(ticksOf(cut.origin, m_timeBase)),
      m_keyframe(source.video() == stream ? cut.keyframe : std::nullopt),
      m_hasBegun(cut.isEntireFile) {
    const AVStream &from = source.stream(stream);
    check(avcodec_parameters_copy(m_stream.codecpar, from.codecpar), "A stream can't be copied");
    m_stream.codecpar->codec_tag = tagFor(*from.codecpar, *output.context().oformat);
    m_stream.avg_frame_rate = from.avg_frame_rate;
    m_stream.r_frame_rate = from.r_frame_rate;
    m_stream.sample_aspect_ratio = from.sample_aspect_ratio;
    for (int index = 0; index < from.nb_side_data; ++index) {
        sourceMetadata::copySideData(from, m_stream, from.side_data[index].type);
    }
    sourceMetadata::copyStream(from, m_stream);
}

void StreamCopier::take(AVPacket &packet) {
    if (m_isDone || timestampOf(packet) == AV_NOPTS_VALUE) {
        return;
    }
    checkTimestamps(packet);
    const MediaTime time = mediaTime(timestampOf(packet), m_timeBase);
    m_hasBegun = m_hasBegun || isCutKeyframe(packet);
    if (m_hasBegun) {
        takeInCut(packet, time);
    } else {
        takeBeforeCut(packet, time);
    }
}

/// PTS of reordered frames can be derived from DTS only by decoding.
void StreamCopier::checkTimestamps(const AVPacket &packet) const {
    if (m_type == AVMEDIA_TYPE_VIDEO && isKeyframe(packet) && packet.pts == AV_NOPTS_VALUE &&
        m_stream.codecpar->video_delay > 0) {
        throw UnsupportedSource(
            QStringLiteral("The source doesn't tell when its frames are shown."));
    }
}

bool StreamCopier::isCutKeyframe(const AVPacket &packet) const {
    return m_keyframe && isKeyframe(packet) && timestampOf(packet) >= *m_keyframe;
}

void StreamCopier::takeBeforeCut(AVPacket &packet, MediaTime time) {
    const bool isVideo = m_type == AVMEDIA_TYPE_VIDEO;
    const MediaTime end = isVideo ? time : time + mediaTime(packet.duration, m_timeBase);
    if (end > m_cut.origin || (isVideo && time >= m_cut.origin)) {
        // A keyframe at the start of the cut depends on no earlier frame.
        if (isVideo && isKeyframe(packet) && time <= m_cut.origin) {
            m_buffered.clear();
        }
        writeBuffered();
        m_hasBegun = true;
        takeInCut(packet, time);
        return;
    }
    if (isVideo && isKeyframe(packet)) {
        m_buffered.clear();
    }
    while (!isVideo && !m_buffered.empty() &&
           mediaTime(timestampOf(*m_buffered.front()), m_timeBase) + kAudioPreroll < m_cut.origin) {
        m_buffered.pop_front();
    }
    const bool isUseless = m_keyframe || (isVideo && m_buffered.empty() && !isKeyframe(packet));
    if (!isUseless && m_type != AVMEDIA_TYPE_DATA) {
        buffer(packet);
    }
}

/// Frames after the cut stay buffered until a frame of the cut follows them in the file, which may
/// refer to them.
void StreamCopier::takeInCut(AVPacket &packet, MediaTime time) {
    const int64_t dts = packet.dts == AV_NOPTS_VALUE ? packet.pts : packet.dts;
    m_isDone = m_cut.isPastEnd(mediaTime(dts, m_timeBase));
    if (m_isDone) {
        m_buffered.clear();
        return;
    }
    buffer(packet);
    if (!m_cut.isPastEnd(time)) {
        writeBuffered();
    }
}

void StreamCopier::buffer(AVPacket &packet) {
    m_buffered.push_back(makePacket());
    av_packet_move_ref(m_buffered.back().get(), &packet);
}

void StreamCopier::writeBuffered() {
    for (const PacketHandle &packet : m_buffered) {
        for (int64_t *time : {&packet->pts, &packet->dts}) {
            *time = *time == AV_NOPTS_VALUE ? AV_NOPTS_VALUE : *time - m_origin;
        }
        m_hasWritten = m_output.write(*packet, m_stream) || m_hasWritten;
    }
    m_buffered.clear();
}

/// Packets that are still buffered lie outside of the cut.
void StreamCopier::finish() {
    m_buffered.clear();
    m_isDone = true;
}

} // namespace corvane::media
