#include "media/TranscodeSession.h"

#include "media/AudioTranscoder.h"
#include "media/StreamCopier.h"
#include "media/VideoTranscoder.h"

namespace corvane::media {

namespace {

void requireDecoder(const AVStream &stream) {
    if (!avcodec_find_decoder(stream.codecpar->codec_id)) {
        throw UnsupportedSource(
            QStringLiteral("The codec %1 can't be decoded.")
                .arg(QString::fromLatin1(avcodec_get_name(stream.codecpar->codec_id))));
    }
}

} // namespace

TranscodeSession::TranscodeSession(std::unique_ptr<ExportSource> opened, std::optional<QSize> bound)
    : FFmpegExportSession(std::move(opened)), m_bound(bound) {
    if (const auto video = source().video()) {
        requireDecoder(source().stream(*video));
    }
    for (const int audio : source().streamsOf(AVMEDIA_TYPE_AUDIO)) {
        requireDecoder(source().stream(audio));
    }
}

std::vector<FFmpegExportSession::Route> TranscodeSession::makeRoutes(const ExportCut &cut,
                                                                     OutputFile &output) const {
    std::vector<Route> routes;
    if (const auto video = source().video()) {
        routes.push_back(
            {*video, std::make_unique<VideoTranscoder>(source(), *video, cut, m_bound, output)});
    }
    for (const int audio : source().streamsOf(AVMEDIA_TYPE_AUDIO)) {
        const int channels = source().stream(audio).codecpar->ch_layout.nb_channels;
        for (int first = 0; first < channels; first += AudioTranscoder::kMaxChannels) {
            routes.push_back(
                {audio, std::make_unique<AudioTranscoder>(source(), audio, first, cut, output)});
        }
    }
    for (const int data : source().streamsOf(AVMEDIA_TYPE_DATA)) {
        if (StreamCopier::isPossible(source().stream(data))) {
            routes.push_back({data, std::make_unique<StreamCopier>(source(), data, cut, output)});
        }
    }
    return routes;
}

} // namespace corvane::media
