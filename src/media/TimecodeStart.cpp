#include "media/TimecodeStart.h"

extern "C" {
#include <libavutil/timecode.h>
}

namespace corvane::media {

namespace {

struct FoundTimecode {
    const char *text = nullptr;
    AVRational rate{}; ///< frames a second that it counts
};

const char *timecodeOf(const AVDictionary *metadata) {
    const AVDictionaryEntry *entry = av_dict_get(metadata, "timecode", nullptr, 0);
    return entry ? entry->value : nullptr;
}

/// The picture's own timecode goes before the file's, and that before any other stream's.
FoundTimecode find(const ExportSource &source) {
    const AVStream &reference = source.stream(source.reference());
    FoundTimecode found{timecodeOf(reference.metadata), reference.avg_frame_rate};
    if (!found.text) {
        found.text = timecodeOf(source.context().metadata);
    }
    for (int i = 0; i < source.streamCount() && !found.text; ++i) {
        found.text = timecodeOf(source.stream(i).metadata);
    }
    return found;
}

} // namespace

std::optional<QByteArray> timecodeAt(const ExportSource &source, MediaTime zero) {
    const FoundTimecode found = find(source);
    AVTimecode timecode;
    if (!found.text || found.rate.num <= 0 || found.rate.den <= 0 ||
        av_timecode_init_from_string(&timecode, found.rate, found.text, nullptr) < 0) {
        return std::nullopt;
    }
    timecode.flags |= AV_TIMECODE_FLAG_24HOURSMAX;
    const MediaTime before = zero - source.start();
    const int64_t frames = ticksOf(before, av_inv_q(found.rate));
    char text[AV_TIMECODE_STR_SIZE] = {};
    av_timecode_make_string(&timecode, text, int(frames));
    return QByteArray(text);
}

} // namespace corvane::media
