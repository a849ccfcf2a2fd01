#include "media/TimecodeStart.h"

extern "C" {
#include <libavutil/timecode.h>
}

namespace corvane::media {

namespace {

struct StartTimecode {
    const char *text = nullptr; ///< nullptr if the source has none
    AVRational frameRate{};
};

const char *timecodeOf(const AVDictionary *metadata) {
    const AVDictionaryEntry *entry = av_dict_get(metadata, "timecode", nullptr, 0);
    return entry ? entry->value : nullptr;
}

/// Prefers the video track's timecode to the file's, and the file's to that of other streams.
StartTimecode startTimecode(const ExportSource &source) {
    const AVStream &reference = source.stream(source.reference());
    StartTimecode start{timecodeOf(reference.metadata), reference.avg_frame_rate};
    if (!start.text) {
        start.text = timecodeOf(source.context().metadata);
    }
    for (const AVStream *stream : allStreams(source.context())) {
        start.text = start.text ? start.text : timecodeOf(stream->metadata);
    }
    return start;
}

} // namespace

std::optional<QByteArray> timecodeAt(const ExportSource &source, MediaTime time) {
    const StartTimecode start = startTimecode(source);
    AVTimecode timecode;
    if (!start.text || start.frameRate.num <= 0 || start.frameRate.den <= 0 ||
        av_timecode_init_from_string(&timecode, start.frameRate, start.text, nullptr) < 0) {
        return std::nullopt; // also for AVERROR_INVALIDDATA: damaged text
    }
    timecode.flags |= AV_TIMECODE_FLAG_24HOURSMAX;
    const int64_t frames = ticksOf(time - source.start(), av_inv_q(start.frameRate));
    char text[AV_TIMECODE_STR_SIZE] = {};
    av_timecode_make_string(&timecode, text, int(frames));
    return QByteArray(text);
}

} // namespace corvane::media
