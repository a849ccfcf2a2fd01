#include "media/SourceMetadata.h"

extern "C" {
#include <libavutil/avstring.h>
#include <libavutil/timecode.h>
}

#include <algorithm>
#include <array>
#include <utility>

namespace corvane::media::sourceMetadata {

namespace {

constexpr char kCreated[] = "creation_time";
constexpr char kTimecode[] = "timecode";

/// Describes the source container or isn't valid for the output.
constexpr std::array kExcluded{"major_brand", "minor_version", "compatible_brands",
                               "encoder",     kTimecode,       "duration"};

/// Camera metadata: names in other containers and in QuickTime.
constexpr std::array<std::pair<const char *, const char *>, 9> kQuickTimeNames{{
    {"make", "com.apple.quicktime.make"},
    {"model", "com.apple.quicktime.model"},
    {"location", "com.apple.quicktime.location.ISO6709"},
    {"com.android.manufacturer", "com.apple.quicktime.make"},
    {"com.android.model", "com.apple.quicktime.model"},
    {"company_name", "com.apple.quicktime.make"},
    {"product_name", "com.apple.quicktime.model"},
    {"modification_date", kCreated},
    {"DATE_RECORDED", kCreated},
}};

const char *valueOf(const AVDictionary *metadata, const char *key) {
    const AVDictionaryEntry *entry = av_dict_get(metadata, key, nullptr, 0); // case-insensitive
    return entry ? entry->value : nullptr;
}

bool isExcluded(const char *key) {
    return std::ranges::any_of(
        kExcluded, [key](const char *excluded) { return av_strcasecmp(key, excluded) == 0; });
}

void addIfMissing(AVDictionary *&metadata, const char *key, const char *value) {
    if (value) {
        setEntry(metadata, key, value, AV_DICT_DONT_OVERWRITE);
    }
}

/// Creation date of the first stream that has one; nullptr if none has.
const char *creationOfStreams(const AVFormatContext &source) {
    for (const AVStream *stream : allStreams(source)) {
        if (const char *created = valueOf(stream->metadata, kCreated)) {
            return created;
        }
    }
    return nullptr;
}

struct StartTimecode {
    const char *text = nullptr; ///< nullptr if the source has none
    AVRational frameRate{};
};

/// Prefers the video track's timecode to the file's, and the file's to that of other streams.
StartTimecode startTimecode(const ExportSource &source) {
    const AVStream &reference = source.stream(source.reference());
    StartTimecode start{valueOf(reference.metadata, kTimecode), reference.avg_frame_rate};
    if (!start.text) {
        start.text = valueOf(source.context().metadata, kTimecode);
    }
    for (const AVStream *stream : allStreams(source.context())) {
        start.text = start.text ? start.text : valueOf(stream->metadata, kTimecode);
    }
    return start;
}

} // namespace

void copyFile(const AVFormatContext &source, AVFormatContext &output) {
    const AVDictionaryEntry *entry = nullptr;
    while ((entry = av_dict_get(source.metadata, "", entry, AV_DICT_IGNORE_SUFFIX))) {
        if (!isExcluded(entry->key)) {
            setEntry(output.metadata, entry->key, entry->value);
        }
    }
    for (const auto &[name, quickTimeName] : kQuickTimeNames) {
        addIfMissing(output.metadata, quickTimeName, valueOf(source.metadata, name));
    }
    // For players that don't read QuickTime's names.
    addIfMissing(output.metadata, "location",
                 valueOf(output.metadata, "com.apple.quicktime.location.ISO6709"));
    addIfMissing(output.metadata, kCreated, creationOfStreams(source));
}

void copyStream(const AVStream &source, AVStream &output) {
    for (const char *key : {"language", "handler_name", "title", kCreated}) {
        addIfMissing(output.metadata, key, valueOf(source.metadata, key));
    }
    output.disposition = source.disposition;
}

void copySideData(const AVStream &source, AVStream &output, AVPacketSideDataType type) {
    size_t size = 0;
    const uint8_t *data = av_stream_get_side_data(&source, type, &size);
    if (data) {
        std::copy_n(data, size, allocated(av_stream_new_side_data(&output, type, size)));
    }
}

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

} // namespace corvane::media::sourceMetadata
