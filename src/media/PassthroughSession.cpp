#include "media/PassthroughSession.h"

#include "media/StreamCopy.h"

namespace corvane::media {

namespace {

constexpr std::array kCopiedTypes{AVMEDIA_TYPE_VIDEO, AVMEDIA_TYPE_AUDIO, AVMEDIA_TYPE_SUBTITLE,
                                  AVMEDIA_TYPE_DATA};

} // namespace

PassthroughSession::PassthroughSession(std::unique_ptr<ExportSource> opened)
    : FFmpegExportSession(std::move(opened)) {
    for (const AVMediaType type : {AVMEDIA_TYPE_VIDEO, AVMEDIA_TYPE_AUDIO}) {
        for (const int index : source().streamsOf(type)) {
            if (!StreamCopy::isPossible(source().stream(index))) {
                throw UnsupportedSource(QStringLiteral("An MPEG-4 file can't hold %1.")
                                            .arg(QString::fromLatin1(avcodec_get_name(
                                                source().stream(index).codecpar->codec_id))));
            }
        }
    }
}

std::vector<FFmpegExportSession::Way> PassthroughSession::makeWays(const ExportCut &cut,
                                                                   OutputFile &output) const {
    std::vector<Way> ways;
    for (const AVMediaType type : kCopiedTypes) {
        for (const int index : source().streamsOf(type)) {
            if (StreamCopy::isPossible(source().stream(index))) {
                ways.push_back({index, std::make_unique<StreamCopy>(source(), index, cut, output)});
            }
        }
    }
    return ways;
}

} // namespace corvane::media
