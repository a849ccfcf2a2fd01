#pragma once

// For the source files of this floor only: what FFmpeg's C objects need to be owned in C++.

#include "media/MediaError.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavfilter/avfilter.h>
#include <libavformat/avformat.h>
#include <libswresample/swresample.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace corvane::media {

/// Frees with one of FFmpeg's functions that take a pointer to the pointer.
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

FrameHandle makeFrame();   ///< throws std::bad_alloc
PacketHandle makePacket(); ///< throws std::bad_alloc

/// FFmpeg's words for one of its error numbers.
QString ffmpegText(int error);

/// Gives a result of 0 or more back, and throws `MediaError` "<what>: <FFmpeg's words>" for less.
int check(int result, const char *what);

/// Keeps FFmpeg's own messages off standard error. Called by whatever opens a file; cheap.
void silenceFFmpeg();

} // namespace corvane::media
