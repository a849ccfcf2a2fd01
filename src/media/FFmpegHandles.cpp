#include "media/FFmpegHandles.h"

#include <mutex>
#include <new>

namespace corvane::media {

FrameHandle makeFrame() {
    FrameHandle frame(av_frame_alloc());
    if (!frame) {
        throw std::bad_alloc();
    }
    return frame;
}

PacketHandle makePacket() {
    PacketHandle packet(av_packet_alloc());
    if (!packet) {
        throw std::bad_alloc();
    }
    return packet;
}

QString ffmpegText(int error) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(error, text, sizeof text);
    return QString::fromUtf8(text);
}

int check(int result, const char *what) {
    if (result < 0) {
        throw MediaError(QString::fromLatin1(what) + QStringLiteral(": ") + ffmpegText(result));
    }
    return result;
}

void setEntry(AVDictionary *&dictionary, const char *key, const char *value, int flags) {
    check(av_dict_set(&dictionary, key, value, flags), "Cannot set an option");
}

void silenceFFmpeg() {
    static std::once_flag once;
    std::call_once(once, [] { av_log_set_level(AV_LOG_QUIET); });
}

} // namespace corvane::media
