#pragma once

// Internal to src/media: calls to FFmpeg's decoders and encoders with their error codes handled.
// `what` begins the description of a `MediaError`, as for `check`.

#include "media/FFmpegHandles.h"

namespace corvane::media {

/// A codec context of an encoder or decoder, not opened yet.
CodecHandle makeCodecContext(const AVCodec &codec);
/// A decoder with the stream's parameters, not opened yet. Throws `MediaError` if FFmpeg has
/// no decoder for the codec.
CodecHandle makeDecoder(const AVStream &stream, const char *what);

/// Sends a packet to a decoder that has room for it; nullptr signals the end of the stream. A
/// damaged packet is skipped, because the frames around it can still be decoded.
void sendPacket(AVCodecContext &decoder, const AVPacket *packet, const char *what);
/// Receives the next undamaged frame. Returns false if the decoder needs another packet or has
/// reached the end of the stream.
bool receiveFrame(AVCodecContext &decoder, AVFrame &frame, const char *what);
/// Receives the next packet. Returns false if the encoder needs another frame or has reached the
/// end of the stream.
bool receivePacket(AVCodecContext &encoder, AVPacket &packet, const char *what);

} // namespace corvane::media
