#include "media/SourceMetadata.h"

extern "C" {
#include <libavutil/avstring.h>
}

#include <array>
#include <cstring>
#include <utility>

namespace corvane::media::sourceMetadata {

namespace {

constexpr char kCreated[] = "creation_time";

/// What the container says only of itself, or what the new file must not repeat.
constexpr std::array kLeftOut{"major_brand", "minor_version", "compatible_brands",
                              "encoder",     "timecode",      "duration"};

/// The names of cameras' facts in other containers, and what QuickTime calls them.
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
    const AVDictionaryEntry *entry = av_dict_get(metadata, key, nullptr, 0); // in any case
    return entry ? entry->value : nullptr;
}

bool isLeftOut(const char *key) {
    const auto is = [key](const char *other) { return av_strcasecmp(key, other) == 0; };
    return std::any_of(kLeftOut.begin(), kLeftOut.end(), is);
}

void addWhereMissing(AVDictionary *&metadata, const char *key, const char *value) {
    if (value) {
        av_dict_set(&metadata, key, value, AV_DICT_DONT_OVERWRITE);
    }
}

/// A file that doesn't say when it was made may say it of its streams.
const char *creationOfStreams(const AVFormatContext &source) {
    for (unsigned i = 0; i < source.nb_streams; ++i) {
        if (const char *created = valueOf(source.streams[i]->metadata, kCreated)) {
            return created;
        }
    }
    return nullptr;
}

void copySideData(const AVStream &source, AVStream &output, AVPacketSideDataType type) {
    size_t size = 0;
    const uint8_t *data = av_stream_get_side_data(&source, type, &size);
    uint8_t *copy = data ? av_stream_new_side_data(&output, type, size) : nullptr;
    if (copy) {
        std::memcpy(copy, data, size);
    }
}

} // namespace

void copyFile(const AVFormatContext &source, AVFormatContext &output) {
    const AVDictionaryEntry *entry = nullptr;
    while ((entry = av_dict_get(source.metadata, "", entry, AV_DICT_IGNORE_SUFFIX))) {
        if (!isLeftOut(entry->key)) {
            av_dict_set(&output.metadata, entry->key, entry->value, 0);
        }
    }
    for (const auto &[name, quickTimeName] : kQuickTimeNames) {
        addWhereMissing(output.metadata, quickTimeName, valueOf(source.metadata, name));
    }
    // Players that know no QuickTime names read this one.
    addWhereMissing(output.metadata, "location",
                    valueOf(output.metadata, "com.apple.quicktime.location.ISO6709"));
    addWhereMissing(output.metadata, kCreated, creationOfStreams(source));
}

void copyStream(const AVStream &source, AVStream &output) {
    for (const char *key : {"language", "handler_name", "title", kCreated}) {
        addWhereMissing(output.metadata, key, valueOf(source.metadata, key));
    }
    output.disposition = source.disposition;
    copySideData(source, output, AV_PKT_DATA_DISPLAYMATRIX);
}

} // namespace corvane::media::sourceMetadata
