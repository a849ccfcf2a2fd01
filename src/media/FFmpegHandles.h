#pragma once

// Internal to src/media: ownership and error handling for FFmpeg's C objects.

#include "media/MediaError.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>
#include <new>
#include <span>

namespace corvane::media {

// Deleters that call a function of FFmpeg, which takes the object or a pointer to the pointer.
template <auto free> struct FreeByAddress {
    template <typename Object> void operator()(Object *object) const { free(&object); }
};
template <auto free> struct FreeByValue {
    template <typename Object> void operator()(Object *object) const { free(object); }
};

using InputHandle = std::unique_ptr<AVFormatContext, FreeByAddress<avformat_close_input>>;
using CodecHandle = std::unique_ptr<AVCodecContext, FreeByAddress<avcodec_free_context>>;
using FrameHandle = std::unique_ptr<AVFrame, FreeByAddress<av_frame_free>>;
using PacketHandle = std::unique_ptr<AVPacket, FreeByAddress<av_packet_free>>;
using ScalerHandle = std::unique_ptr<SwsContext, FreeByValue<sws_freeContext>>;
using ResamplerHandle = std::unique_ptr<SwrContext, FreeByAddress<swr_free>>;
using FilterGraphHandle = std::unique_ptr<AVFilterGraph, FreeByAddress<avfilter_graph_free>>;

/// Returns what an allocation returned; throws `std::bad_alloc` for a null pointer.
template <typename Pointer> Pointer allocated(Pointer pointer) {
    if (!pointer) {
        throw std::bad_alloc();
    }
    return pointer;
}

inline FrameHandle makeFrame() {
    return FrameHandle(allocated(av_frame_alloc()));
}
inline PacketHandle makePacket() {
    return PacketHandle(allocated(av_packet_alloc()));
}

/// Returns `result` if it is at least 0. Throws `MediaError` "<what>: <FFmpeg's description>" if it
/// is an error code.
int check(int result, const char *what);

/// Owns the entries of a dictionary.
struct Dictionary {
    Dictionary() = default;
    ~Dictionary() { av_dict_free(&entries); }
    Q_DISABLE_COPY_MOVE(Dictionary)

    AVDictionary *entries = nullptr;
};

/// Sets a dictionary entry; throws `MediaError`. Flags are those of `av_dict_set`.
void setEntry(AVDictionary *&dictionary, const char *key, const char *value, int flags = 0);

inline std::span<AVStream *const> allStreams(const AVFormatContext &context) {
    return {context.streams, context.nb_streams};
}

/// PTS, or DTS if the packet has no PTS.
inline int64_t timestampOf(const AVPacket &packet) {
    return packet.pts == AV_NOPTS_VALUE ? packet.dts : packet.pts;
}

inline bool isKeyframe(const AVPacket &packet) {
    return (packet.flags & AV_PKT_FLAG_KEY) != 0;
}

/// Turns off FFmpeg's messages and limits its allocations. Call before opening a file; cheap.
/// Thread-safe.
void initializeFFmpeg();

} // namespace corvane::media
