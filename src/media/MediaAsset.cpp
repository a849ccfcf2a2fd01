#include "media/MediaAsset.h"

#include "media/MediaInput.h"
#include "media/MediaSubType.h"

#include <algorithm>

namespace corvane::media {

namespace {

double audioDataRate(const AVCodecParameters &codec) {
    if (codec.bit_rate > 0) {
        return double(codec.bit_rate);
    }
    return double(codec.sample_rate) * codec.ch_layout.nb_channels *
           av_get_bits_per_sample(codec.codec_id);
}

/// Bits per second of all tracks together; nullopt if unknown.
std::optional<double> fileDataRate(const AVFormatContext &context,
                                   std::optional<MediaTime> duration) {
    const qint64 bytes = context.pb ? avio_size(context.pb) : 0;
    return duration && bytes > 0 ? std::optional(double(bytes) * 8 / duration->seconds())
                                 : std::nullopt;
}

/// Bits per second that remain for a single video track after the audio tracks.
double remainingDataRate(const AVFormatContext &context, std::optional<MediaTime> duration) {
    double rate = fileDataRate(context, duration).value_or(0);
    for (const AVStream *stream : allStreams(context)) {
        const AVCodecParameters &codec = *stream->codecpar;
        if (codec.codec_type == AVMEDIA_TYPE_AUDIO) {
            rate -= audioDataRate(codec);
        }
    }
    return std::max(rate, 0.0);
}

/// The container's data rate, or 0 if the track would be larger than the file.
double credibleDataRate(const AVFormatContext &context, const AVStream &stream,
                        std::optional<MediaTime> duration) {
    constexpr double kRounding = 1.01;
    const auto rate = double(stream.codecpar->bit_rate);
    return rate <= fileDataRate(context, duration).value_or(rate) * kRounding ? rate : 0;
}

VideoTrack videoTrack(const AVFormatContext &context, const AVStream &stream) {
    const AVCodecParameters &codec = *stream.codecpar;
    return {.naturalSize = QSizeF(codec.width, codec.height),
            .nominalFrameRate = av_q2d(nominalRate(stream)),
            .mediaSubType = mediaSubType(context, stream)};
}

/// The duration of the first audio stream of a file whose header has none, such as bare AAC. Reads
/// all packets: the data rate of the first ones would only give an estimate.
std::optional<MediaTime> measuredAudioDuration(const QString &path, std::stop_token stop) {
    MediaInput input(path, MediaInput::Depth::Coding, std::move(stop));
    const AVFormatContext &context = *input.context();
    const int index = av_find_best_stream(input.context(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (index < 0) {
        return std::nullopt;
    }
    qint64 ticks = 0;
    const auto packet = makePacket();
    while (input.read(*packet)) {
        if (packet->stream_index == index) {
            ticks += std::max<qint64>(packet->duration, 0);
        }
    }
    const double seconds = double(ticks) * av_q2d(context.streams[index]->time_base);
    return ticks > 0 ? std::optional(MediaTime::fromSeconds(seconds)) : std::nullopt;
}

} // namespace

MediaAsset MediaAsset::read(const QString &path, std::stop_token stop) {
    const MediaInput input(path, MediaInput::Depth::Facts, stop);
    const AVFormatContext &context = *input.context();
    MediaAsset asset{.duration = input.duration()};
    for (const AVStream *stream : allStreams(context)) {
        if (isVideo(*stream)) {
            asset.videoTracks.append(videoTrack(context, *stream));
            // Other containers store the encoder's limit instead of the actual rate.
            if (isQuickTime(context)) {
                asset.videoTracks.last().estimatedDataRate =
                    credibleDataRate(context, *stream, asset.duration);
            }
        } else if (stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            asset.audioTracks.append({.mediaSubType = mediaSubType(context, *stream)});
        }
    }
    if (!asset.duration && asset.videoTracks.isEmpty() && !asset.audioTracks.isEmpty()) {
        asset.duration = measuredAudioDuration(path, std::move(stop));
    }
    if (asset.videoTracks.size() == 1 && asset.videoTracks.first().estimatedDataRate <= 0) {
        asset.videoTracks.first().estimatedDataRate = remainingDataRate(context, asset.duration);
    }
    return asset;
}

} // namespace corvane::media
