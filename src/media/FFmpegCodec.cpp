#include "media/FFmpegCodec.h"

#include <new>

namespace corvane::media {

CodecHandle makeCodecContext(const AVCodec &codec) {
    return CodecHandle(allocated(avcodec_alloc_context3(&codec)));
}

CodecHandle makeDecoder(const AVStream &stream, const char *what) {
    const AVCodec *codec = avcodec_find_decoder(stream.codecpar->codec_id);
    check(codec ? 0 : AVERROR_DECODER_NOT_FOUND, what);
    CodecHandle decoder = makeCodecContext(*codec);
    check(avcodec_parameters_to_context(decoder.get(), stream.codecpar), what);
    decoder->pkt_timebase = stream.time_base;
    return decoder;
}

void sendPacket(AVCodecContext &decoder, const AVPacket *packet, const char *what) {
    const int result = avcodec_send_packet(&decoder, packet);
    if (result == AVERROR(ENOMEM)) {
        throw std::bad_alloc();
    }
    // All codes but this one are faults of the packet, such as AVERROR_INVALIDDATA.
    check(result == AVERROR(EAGAIN) ? result : 0, what);
}

bool receiveFrame(AVCodecContext &decoder, AVFrame &frame, const char *what) {
    for (;;) {
        const int result = avcodec_receive_frame(&decoder, &frame);
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return false;
        }
        if (result != AVERROR_INVALIDDATA) { // a damaged frame; others may follow
            check(result, what);
            return true;
        }
    }
}

bool receivePacket(AVCodecContext &encoder, AVPacket &packet, const char *what) {
    const int result = avcodec_receive_packet(&encoder, &packet);
    if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
        return false;
    }
    check(result, what);
    return true;
}

} // namespace corvane::media
