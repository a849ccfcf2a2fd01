#include "media/MediaSubType.h"

#include "media/MediaInput.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

namespace corvane::media {

namespace {

consteval quint32 code(const char (&characters)[5]) {
    quint32 value = 0;
    for (int index = 0; index < 4; ++index) {
        value = value << 8 | quint32(characters[index]);
    }
    return value;
}

/// Codecs for which FFmpeg's tables list several codes or begin with a rare one.
constexpr auto kCommonCodes = std::to_array<std::pair<AVCodecID, quint32>>({
    {AV_CODEC_ID_H264, code("avc1")},
    {AV_CODEC_ID_HEVC, code("hvc1")},
    {AV_CODEC_ID_MPEG1VIDEO, code("mp1v")},
    {AV_CODEC_ID_MPEG2VIDEO, code("mp2v")},
    {AV_CODEC_ID_MPEG4, code("mp4v")},
    {AV_CODEC_ID_MJPEG, code("jpeg")},
    {AV_CODEC_ID_DNXHD, code("AVdn")},
    {AV_CODEC_ID_JPEG2000, code("mjp2")},
    {AV_CODEC_ID_DVVIDEO, code("dvc ")},
    {AV_CODEC_ID_RAWVIDEO, code("raw ")},
    {AV_CODEC_ID_AAC, code("mp4a")},
    {AV_CODEC_ID_MP2, code(".mp2")},
    {AV_CODEC_ID_MP3, code(".mp3")},
    {AV_CODEC_ID_OPUS, code("Opus")},
    {AV_CODEC_ID_VORBIS, code("vorb")},
});

constexpr auto kProResCodes = std::to_array<quint32>(
    {code("apco"), code("apcs"), code("apcn"), code("apch"), code("ap4h"), code("ap4x")});

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
        return isKnown ? kProResCodes.at(size_t(codec.profile)) : code("apcn");
    }
    const bool isPCM =
        codec.codec_id >= AV_CODEC_ID_FIRST_AUDIO && codec.codec_id < AV_CODEC_ID_ADPCM_IMA_QT;
    return isPCM ? code("lpcm") : 0;
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
