#include "media/MediaSubType.h"

#include "media/MediaInput.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace corvane::media {

namespace {

/// Codecs for which FFmpeg's tables list several codes or begin with a rare one.
constexpr auto kCommonCodes = std::to_array<std::pair<AVCodecID, quint32>>({
    {AV_CODEC_ID_H264, fourCC("avc1")},
    {AV_CODEC_ID_HEVC, fourCC("hvc1")},
    {AV_CODEC_ID_MPEG1VIDEO, fourCC("mp1v")},
    {AV_CODEC_ID_MPEG2VIDEO, fourCC("mp2v")},
    {AV_CODEC_ID_MPEG4, fourCC("mp4v")},
    {AV_CODEC_ID_MJPEG, fourCC("jpeg")},
    {AV_CODEC_ID_DNXHD, fourCC("AVdn")},
    {AV_CODEC_ID_JPEG2000, fourCC("mjp2")},
    {AV_CODEC_ID_DVVIDEO, fourCC("dvc ")},
    {AV_CODEC_ID_RAWVIDEO, fourCC("raw ")},
    {AV_CODEC_ID_AAC, fourCC("mp4a")},
    {AV_CODEC_ID_MP2, fourCC(".mp2")},
    {AV_CODEC_ID_MP3, fourCC(".mp3")},
    {AV_CODEC_ID_OPUS, fourCC("Opus")},
    {AV_CODEC_ID_VORBIS, fourCC("vorb")},
});

constexpr auto kProResCodes =
    std::to_array<quint32>({fourCC("apco"), fourCC("apcs"), fourCC("apcn"), fourCC("apch"),
                            fourCC("ap4h"), fourCC("ap4x")});

/// AVI stores characters only for video codecs; its audio codes are numbers.
bool isPrintable(quint32 tag) {
    const auto bytes = std::bit_cast<std::array<uchar, 4>>(tag);
    return std::ranges::all_of(bytes, [](uchar byte) { return byte >= ' ' && byte <= '~'; });
}

quint32 commonCode(const AVCodecParameters &codec) {
    const auto common =
        std::ranges::find(kCommonCodes, codec.codec_id, &std::pair<AVCodecID, quint32>::first);
    if (common != kCommonCodes.end()) {
        return common->second;
    }
    if (codec.codec_id == AV_CODEC_ID_PRORES) {
        const bool isKnown = codec.profile >= 0 && codec.profile < int(kProResCodes.size());
        return isKnown ? kProResCodes.at(size_t(codec.profile)) : fourCC("apcn");
    }
    const bool isPCM =
        codec.codec_id >= AV_CODEC_ID_FIRST_AUDIO && codec.codec_id < AV_CODEC_ID_ADPCM_IMA_QT;
    return isPCM ? fourCC("lpcm") : 0;
}

} // namespace

quint32 mediaSubType(const AVFormatContext &container, const AVStream &stream) {
    const AVCodecParameters &codec = *stream.codecpar;
    if (codec.codec_tag != 0 && (isQuickTime(container) || isPrintable(codec.codec_tag))) {
        return std::byteswap(codec.codec_tag); // FFmpeg stores the first character lowest
    }
    if (const quint32 codecCode = commonCode(codec)) {
        return codecCode;
    }
    const AVCodecTag *tables[] = {avformat_get_mov_video_tags(), avformat_get_mov_audio_tags(),
                                  avformat_get_riff_video_tags(), nullptr};
    return std::byteswap(quint32(av_codec_get_tag(tables, codec.codec_id)));
}

} // namespace corvane::media
