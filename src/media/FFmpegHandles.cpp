#include "media/FFmpegHandles.h"

#include <mutex>

namespace corvane::media {

int check(int result, const char *what) {
    if (result < 0) {
        char text[AV_ERROR_MAX_STRING_SIZE] = {};
        av_strerror(result, text, sizeof text);
        throw MediaError(QString::fromLatin1(what) + QStringLiteral(": ") +
                         QString::fromUtf8(text));
    }
    return result;
}

void setEntry(AVDictionary *&dictionary, const char *key, const char *value, int flags) {
    check(av_dict_set(&dictionary, key, value, flags), "Cannot set an option");
}

void initializeFFmpeg() {
    // No valid frame, packet or table is larger.
    constexpr size_t kMaxAllocation = size_t(512) << 20;
    static std::once_flag once;
    std::call_once(once, [] {
        av_log_set_level(AV_LOG_QUIET);
        av_max_alloc(kMaxAllocation);
    });
}

} // namespace corvane::media
