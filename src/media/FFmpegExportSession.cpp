#include "media/FFmpegExportSession.h"

#include "media/SourceMetadata.h"
#include "media/TimecodeStart.h"

#include <algorithm>

namespace corvane::media {

namespace {

/// A stream that ends before the others, or has gaps, isn't waited for longer than this.
constexpr MediaTime kLongestLag{10, 1};

} // namespace

FFmpegExportSession::FFmpegExportSession(std::unique_ptr<ExportSource> source)
    : m_source(std::move(source)) {}

void FFmpegExportSession::run(const QString &path, std::optional<MediaTimeRange> range,
                              std::stop_token stop) {
    m_source->setStop(stop);
    const ExportCut cut = locateCut(*m_source, range);
    OutputFile output(path);
    const std::vector<Way> ways = makeWays(cut, output);
    describe(cut, output);
    output.begin();
    goToCut(*m_source, cut);
    transfer(cut, ways);
    for (const Way &way : ways) {
        way.taker->finish();
    }
    testContent(cut, ways);
    output.finish();
    m_progress = 1;
}

void FFmpegExportSession::describe(const ExportCut &cut, OutputFile &output) const {
    AVFormatContext &context = output.context();
    sourceMetadata::copyFile(m_source->context(), context);
    const auto timecode = timecodeAt(*m_source, cut.zero);
    for (unsigned i = 0; i < context.nb_streams && timecode; ++i) {
        if (context.streams[i]->codecpar->codec_type == AVMEDIA_TYPE_VIDEO) {
            av_dict_set(&context.streams[i]->metadata, "timecode", timecode->constData(), 0);
            break;
        }
    }
}

void FFmpegExportSession::transfer(const ExportCut &cut, const std::vector<Way> &ways) {
    const PacketHandle packet = makePacket();
    const auto isDone = [](const Way &way) { return way.taker->isDone(); };
    while (!std::all_of(ways.begin(), ways.end(), isDone) && m_source->read(*packet)) {
        noteProgress(*packet, cut);
        const int64_t decoded = packet->dts;
        const int stream = packet->stream_index;
        for (const Way &way : ways) {
            if (way.stream == stream) {
                way.taker->take(*packet);
            }
        }
        av_packet_unref(packet.get());
        if (cut.last && decoded != AV_NOPTS_VALUE &&
            mediaTime(decoded, m_source->stream(stream).time_base) > *cut.last + kLongestLag) {
            break;
        }
    }
}

void FFmpegExportSession::noteProgress(const AVPacket &packet, const ExportCut &cut) {
    const auto duration = m_source->duration();
    if (packet.stream_index != m_source->reference() || packet.pts == AV_NOPTS_VALUE ||
        (!duration && !cut.out)) {
        return;
    }
    const MediaTime end = duration ? m_source->start() + *duration : *cut.out;
    const double total = ((cut.out && *cut.out < end ? *cut.out : end) - cut.zero).seconds();
    const MediaTime time =
        mediaTime(packet.pts, m_source->stream(packet.stream_index).time_base) - cut.zero;
    if (total > 0) {
        m_progress = std::max(m_progress.load(), std::clamp(time.seconds() / total, 0.0, 0.99));
    }
}

void FFmpegExportSession::testContent(const ExportCut &cut, const std::vector<Way> &ways) const {
    const int reference = m_source->reference();
    for (const Way &way : ways) {
        if (way.stream == reference && way.taker->hasWritten()) {
            return;
        }
    }
    throw MediaError(
        cut.isWhole ? QStringLiteral("Nothing of the source can be decoded. It may be damaged.")
                    : QStringLiteral("The source shows nothing in this range."));
}

} // namespace corvane::media
