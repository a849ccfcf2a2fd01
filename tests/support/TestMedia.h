#pragma once

#include "media/RGBImage.h"

#include <QByteArray>
#include <QSize>
#include <QString>

#include <functional>
#include <optional>

struct AVFrame;

/// Clips for tests, encoded by the `ffmpeg` command. Each frame shows its number, from 0, as a
/// pattern of black and white blocks that survives scaling and lossy encoding.
namespace corvane::test {

/// The properties of a clip. By default H.264 without B-frames, which is fast to encode.
struct ClipOptions {
    QByteArray codec = "libx264"; ///< an encoder, used with its fastest preset
    QSize size = {320, 180};
    int frames = 50; ///< up to 1024; 0 for a clip without video
    QByteArray rate = "25";
    int gop = 12;
    int bFrames = 0;
    bool openGop = false; ///< H.264 and HEVC
    bool interlaced = false;
    QByteArray pixelFormat = "yuv420p";
    /// PTS of each frame in milliseconds: an ffmpeg expression of N, the frame's number. Empty for
    /// a constant rate.
    QByteArray milliseconds;
    double videoDelay = 0; ///< seconds from the start of the audio to the first frame
    int rotation = 0;      ///< degrees clockwise for display; mov and mp4 only
    int audioTracks = 0;   ///< number of tracks, each a sine wave
    QByteArray audioCodec = "aac";
    double audioSeconds = 0; ///< 0: as long as the video
    /// Further output options, separated by spaces: "-timecode 10:00:00:00", "-metadata
    /// creation_time=...".
    QByteArray arguments = {};
};

/// Creates a clip at `path`, which contains no spaces and whose extension selects the container,
/// and returns the path. A failure fails the test.
QString makeClip(const QString &path, const ClipOptions &options = {});

/// Creates a clip of two frames in BT.2020 with a transfer function of high dynamic range. They
/// show a test pattern instead of a number.
QString makeHDRClip(const QString &path, const char *transfer);

/// Runs the `ffmpeg` command with arguments separated by spaces and `input` on its standard input.
/// A failure fails the test.
void runFFmpeg(const QString &arguments, const QByteArray &input = {});

/// The number that a frame of such a clip shows; nullopt if no number is recognized. `quarterTurns`
/// is the clockwise rotation of the image relative to the stored frame.
std::optional<int> frameNumber(const media::RGBImage &image, int quarterTurns = 0);
/// For any pixel format whose first component is luma or red.
std::optional<int> frameNumber(const AVFrame &frame);
/// For any image, by the brightness of its pixels from 0 to 1.
std::optional<int> frameNumber(QSize size, int quarterTurns,
                               const std::function<double(int x, int y)> &brightness);

/// Decodes a JPEG file; an empty image on failure.
media::RGBImage decodedJPEG(const QByteArray &bytes);

} // namespace corvane::test
