#include "media/FFmpegExportSession.h"

#include "media/SourceMetadata.h"
#include "media/StreamCopier.h"

#include <algorithm>

namespace corvane::media {

namespace {

/// Reading goes on this long after the end of the cut for streams that haven't reached it, because
/// they are interleaved later, have gaps or end early.
constexpr MediaTime kMaxLag{10, 1};

} // namespace

StreamExport::~StreamExport() = default;

FFmpegExportSession::FFmpegExportSession(std::unique_ptr<ExportSource> source)
    : m_source(std::move(source)) {}

void FFmpegExportSession::run(const QString &path, std::optional<MediaTimeRange> range,
                              std::stop_token stop) {
    m_source->setStop(stop);
    const ExportCut cut = findCut(*m_source, range);
    OutputFile output(path);
    const std::vector<Route> routes = makeRoutes(cut, output);
    copyMetadata(cut, output);
    output.begin();
    seekToCut(*m_source, cut);
    transfer(cut, routes);
    for (const Route &route : routes) {
        route.sink->finish();
    }
    checkOutput(cut, routes);
    output.finish(stop);
    m_progress = 1;
}

void FFmpegExportSession::addCopies(AVMediaType type, const ExportCut &cut, OutputFile &output,
                                    std::vector<Route> &routes) const {
    for (const int index : m_source->streamsOf(type)) {
        if (StreamCopier::isPossible(m_source->stream(index))) {
            routes.push_back(
                {index, std::make_unique<StreamCopier>(*m_source, index, cut, output)});
        }
    }
}

void FFmpegExportSession::copyMetadata(const ExportCut &cut, OutputFile &output) const {
    sourceMetadata::copyFile(m_source->context(), output.context());
    const auto timecode = sourceMetadata::timecodeAt(*m_source, cut.origin);
    if (AVStream *video = firstVideoStream(output.context()); video && timecode) {
        setEntry(video->metadata, "timecode", timecode->constData());
    }
}

void FFmpegExportSession::transfer(const ExportCut &cut, const std::vector<Route> &routes) {
    const PacketHandle packet = makePacket();
    const auto isDone = [](const Route &route) { return route.sink->isDone(); };
    while (!std::ranges::all_of(routes, isDone) && m_source->read(*packet)) {
        updateProgress(*packet, cut);
        const int64_t dts = packet->dts;
        const int stream = packet->stream_index;
        for (const Route &route : routes) {
            if (route.stream == stream) {
                route.sink->take(*packet);
            }
        }
        if (cut.end && dts != AV_NOPTS_VALUE &&
            mediaTime(dts, m_source->stream(stream).time_base) > *cut.end + kMaxLag) {
            break;
        }
    }
}

void FFmpegExportSession::updateProgress(const AVPacket &packet, const ExportCut &cut) {
    const auto duration = m_source->duration();
    if (packet.stream_index != m_source->reference() || packet.pts == AV_NOPTS_VALUE ||
        (!duration && !cut.audioEnd)) {
        return;
    }
    const MediaTime sourceEnd = duration ? m_source->start() + *duration : *cut.audioEnd;
    const MediaTime end = std::min(cut.audioEnd.value_or(sourceEnd), sourceEnd);
    const double total = (end - cut.origin).seconds();
    const MediaTime time =
        mediaTime(packet.pts, m_source->stream(packet.stream_index).time_base) - cut.origin;
    if (total > 0) {
        m_progress = std::max(m_progress.load(), std::clamp(time.seconds() / total, 0.0, 0.99));
    }
}

/// Throws if no packet of the reference stream was written.
void FFmpegExportSession::checkOutput(const ExportCut &cut,
                                      const std::vector<Route> &routes) const {
    const auto hasReference = [this](const Route &route) {
        return route.stream == m_source->reference() && route.sink->hasWritten();
    };
    if (std::ranges::none_of(routes, hasReference)) {
        throw MediaError(cut.isEntireFile
                             ? QStringLiteral("Nothing of the source can be decoded. "
                                              "It may be damaged.")
                             : QStringLiteral("The source shows nothing in this range."));
    }
}

} // namespace corvane::media
