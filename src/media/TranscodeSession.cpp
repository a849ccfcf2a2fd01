#include "media/TranscodeSession.h"

#include "media/AudioEncoding.h"
#include "media/StreamCopy.h"
#include "media/VideoEncoding.h"

namespace corvane::media {

namespace {

void testDecodable(const AVStream &stream) {
    if (!avcodec_find_decoder(stream.codecpar->codec_id)) {
        throw UnsupportedSource(
            QStringLiteral("The codec %1 can't be decoded.")
                .arg(QString::fromLatin1(avcodec_get_name(stream.codecpar->codec_id))));
    }
}

} // namespace

TranscodeSession::TranscodeSession(std::unique_ptr<ExportSource> opened, std::optional<QSize> bound)
    : FFmpegExportSession(std::move(opened)), m_bound(bound) {
    if (const auto picture = source().video()) {
        testDecodable(source().stream(*picture));
    }
    for (const int sound : source().streamsOf(AVMEDIA_TYPE_AUDIO)) {
        testDecodable(source().stream(sound));
    }
}

std::vector<FFmpegExportSession::Way> TranscodeSession::makeWays(const ExportCut &cut,
                                                                 OutputFile &output) const {
    std::vector<Way> ways;
    if (const auto picture = source().video()) {
        ways.push_back(
            {*picture, std::make_unique<VideoEncoding>(source(), *picture, cut, m_bound, output)});
    }
    for (const int sound : source().streamsOf(AVMEDIA_TYPE_AUDIO)) {
        const int channels = source().stream(sound).codecpar->ch_layout.nb_channels;
        for (int first = 0; first < channels; first += AudioEncoding::kMostChannels) {
            ways.push_back(
                {sound, std::make_unique<AudioEncoding>(source(), sound, first, cut, output)});
        }
    }
    for (const int data : source().streamsOf(AVMEDIA_TYPE_DATA)) {
        if (StreamCopy::isPossible(source().stream(data))) {
            ways.push_back({data, std::make_unique<StreamCopy>(source(), data, cut, output)});
        }
    }
    return ways;
}

} // namespace corvane::media
