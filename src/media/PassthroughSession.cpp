#include "media/PassthroughSession.h"

#include "media/StreamCopier.h"

namespace corvane::media {

namespace {

constexpr std::array kCopiedTypes{AVMEDIA_TYPE_VIDEO, AVMEDIA_TYPE_AUDIO, AVMEDIA_TYPE_SUBTITLE,
                                  AVMEDIA_TYPE_DATA};

} // namespace

PassthroughSession::PassthroughSession(std::unique_ptr<ExportSource> opened)
    : FFmpegExportSession(std::move(opened)) {
    for (const AVMediaType type : {AVMEDIA_TYPE_VIDEO, AVMEDIA_TYPE_AUDIO}) {
        for (const int index : source().streamsOf(type)) {
            if (!StreamCopier::isPossible(source().stream(index))) {
                throw UnsupportedSource(QStringLiteral("An MPEG-4 file can't hold %1.")
                                            .arg(QString::fromLatin1(avcodec_get_name(
                                                source().stream(index).codecpar->codec_id))));
            }
        }
    }
}

std::vector<FFmpegExportSession::Route> PassthroughSession::makeRoutes(const ExportCut &cut,
                                                                       OutputFile &output) const {
    std::vector<Route> routes;
    for (const AVMediaType type : kCopiedTypes) {
        for (const int index : source().streamsOf(type)) {
            if (StreamCopier::isPossible(source().stream(index))) {
                routes.push_back(
                    {index, std::make_unique<StreamCopier>(source(), index, cut, output)});
            }
        }
    }
    return routes;
}

} // namespace corvane::media
