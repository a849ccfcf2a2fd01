#pragma once

#include "media/RGBImage.h"

#include <QSize>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

struct AVFrame;

/// Clips for tests, made by the `ffmpeg` command. Every frame carries its number, from 0, as a
/// pattern of black and white blocks that survives scaling and lossy coding.
namespace corvane::test {

/// What a clip is made of. The defaults give H.264 without B frames that is quick to make.
struct ClipOptions {
    QString codec = QStringLiteral("libx264"); ///< an encoder's name; its fastest preset is taken
    QSize size = {320, 180};
    int frames = 50; ///< up to 1024; 0 for a clip without video
    QString rate = QStringLiteral("25");
    int gop = 12;
    int bFrames = 0;
    bool openGop = false; ///< H.264 and HEVC
    bool interlaced = false;
    QString pixelFormat = QStringLiteral("yuv420p");
    /// When each frame is shown: an expression of ffmpeg in N, the frame's number, that gives whole
    /// milliseconds. Empty for a constant rate.
    QString milliseconds;
    double videoDelay = 0; ///< seconds by which the first frame is later than the audio's begin
    int rotation = 0;      ///< degrees clockwise that show the picture upright; mov and mp4
    int audioTracks = 0;   ///< of a sine, as long as the video
    QString audioCodec = QStringLiteral("aac");
    double audioSeconds = 0; ///< 0: as long as the video
    /// Anything further for the output: "-timecode 10:00:00:00", "-metadata creation_time=...".
    QStringList arguments = {};
};

/// Makes the clip at `path`, whose extension names the container, and gives the path back. A
/// failure fails the test.
QString makeClip(const QString &path, const ClipOptions &options = {});

/// Runs the `ffmpeg` command with these arguments, `input` on its standard input; a failure fails
/// the test.
void runFFmpeg(const QStringList &arguments, const QByteArray &input = {});

/// The number that a picture of one of these clips carries, or nothing where it carries none.
/// `quarterTurns`: how far the picture was turned clockwise since it was stored.
std::optional<int> frameNumber(const media::RGBImage &image, int quarterTurns = 0);
/// Of a decoded picture in any planar or packed format whose first component is luma or red.
std::optional<int> frameNumber(const AVFrame &picture);
/// Of any picture, by the brightness of its points from 0 to 1.
std::optional<int> frameNumber(QSize size, int quarterTurns,
                               const std::function<double(int x, int y)> &brightness);

/// A JPEG file's picture; an empty one for what is no JPEG file.
media::RGBImage decodedJPEG(const QByteArray &bytes);

} // namespace corvane::test
