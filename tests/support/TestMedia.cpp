#include "support/TestMedia.h"

#include "support/Command.h"

#include <gtest/gtest.h>

#include <QFile>

#include <turbojpeg.h>

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/pixdesc.h>
}

namespace corvane::test {

namespace {

// A grid of blocks. The first is white and the last black, which reveals an upside-down frame;
// those in between are the bits of the number, lowest first.
constexpr int kColumns = 4;
constexpr int kRows = 3;
constexpr int kBits = kColumns * kRows - 2;

bool isWhite(int block, int number) {
    return block == 0 || (block <= kBits && ((number >> (block - 1)) & 1) != 0);
}

QByteArray drawnFrame(QSize size, int number) {
    QByteArray gray(qsizetype(size.width()) * size.height(), char(0));
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const int block = y * kRows / size.height() * kColumns + x * kColumns / size.width();
            gray[qsizetype(y) * size.width() + x] = isWhite(block, number) ? char(235) : char(16);
        }
    }
    return gray;
}

double seconds(const ClipOptions &options) {
    const QByteArrayList rate = options.rate.split('/');
    return options.frames * rate.value(1, "1").toDouble() / rate.first().toDouble();
}

QString inputs(const ClipOptions &options) {
    QString arguments;
    if (options.frames > 0) {
        arguments += QStringLiteral("-f rawvideo -pix_fmt gray -s %1x%2 -r %3 -i pipe:0 ")
                         .arg(options.size.width())
                         .arg(options.size.height())
                         .arg(QLatin1String(options.rate));
    }
    const double length = options.audioSeconds > 0 ? options.audioSeconds : seconds(options);
    for (int track = 0; track < options.audioTracks; ++track) {
        arguments += QStringLiteral("-f lavfi -t %1 -i sine=frequency=%2:sample_rate=48000 ")
                         .arg(length)
                         .arg(440 * (track + 1));
    }
    const int streams = options.audioTracks + (options.frames > 0 ? 1 : 0);
    for (int stream = 0; stream < streams; ++stream) {
        arguments += QStringLiteral("-map %1 ").arg(stream);
    }
    return arguments;
}

QString presetOf(const ClipOptions &options) {
    if (options.codec == "libx264") {
        return QStringLiteral("-preset ultrafast -crf 12 -sc_threshold 0 "
                              "-x264-params open-gop=%1:b-adapt=0")
            .arg(int(options.openGop));
    }
    if (options.codec == "libx265") {
        return QStringLiteral("-preset ultrafast -crf 12 -x265-params log-level=none:scenecut=0:"
                              "b-adapt=0:open-gop=%1:keyint=%2:min-keyint=%2:bframes=%3")
            .arg(int(options.openGop))
            .arg(options.gop)
            .arg(options.bFrames);
    }
    if (options.codec == "libsvtav1") {
        return QStringLiteral("-preset 12 -crf 20");
    }
    if (options.codec == "libvpx-vp9") {
        return QStringLiteral("-deadline realtime -cpu-used 8 -b:v 2M");
    }
    return options.codec == "dnxhd" ? QString() : QStringLiteral("-q:v 2");
}

QString videoEncoding(const ClipOptions &options) {
    if (options.frames == 0) {
        return QStringLiteral("-vn");
    }
    QString arguments = QStringLiteral("-c:v %1 %2 -pix_fmt %3 -g %4")
                            .arg(QLatin1String(options.codec), presetOf(options),
                                 QLatin1String(options.pixelFormat))
                            .arg(options.gop);
    if (options.bFrames > 0 && options.codec != "libx265") {
        arguments += QStringLiteral(" -bf %1").arg(options.bFrames);
    }
    QStringList filters;
    if (options.interlaced) {
        arguments += QStringLiteral(" -flags +ilme+ildct -top 1");
        filters.append(QStringLiteral("setfield=tff"));
    }
    if (options.videoDelay > 0 || !options.milliseconds.isEmpty()) {
        // The default mode would repeat frames to fill gaps.
        arguments += QStringLiteral(" -fps_mode passthrough -enc_time_base 1/90000");
        const QByteArray times =
            options.milliseconds.isEmpty() ? "PTS" : '(' + options.milliseconds + ")/1000/TB";
        filters.prepend(QStringLiteral("settb=1/90000,setpts='%1+%2/TB'")
                            .arg(QLatin1String(times))
                            .arg(options.videoDelay));
    }
    return filters.isEmpty() ? arguments
                             : arguments + QStringLiteral(" -vf ") + filters.join(QLatin1Char(','));
}

} // namespace

void runFFmpeg(const QString &arguments, const QByteArray &input) {
    const QString line = QStringLiteral("ffmpeg -v error -y ") + arguments;
    const QStringList command = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    EXPECT_EQ(runCommand(command, input).exitCode, 0) << line.toStdString();
}

QString makeClip(const QString &path, const ClipOptions &options) {
    QByteArray frames;
    for (int number = 0; number < options.frames; ++number) {
        frames += drawnFrame(options.size, number);
    }
    const QString extension = path.mid(path.lastIndexOf(QLatin1Char('.')));
    const QString upright =
        options.rotation == 0 ? path : path + QStringLiteral(".upright") + extension;
    runFFmpeg(QStringList{inputs(options), videoEncoding(options), QStringLiteral("-c:a"),
                          QString::fromLatin1(options.audioCodec),
                          QString::fromLatin1(options.arguments), upright}
                  .join(QLatin1Char(' ')),
              frames);
    if (upright != path) {
        // ffmpeg only sets a rotation when it copies the stream, and counts counter-clockwise.
        runFFmpeg(QStringLiteral("-i %1 -map 0 -c copy -metadata:s:v:0 rotate=%2 %3")
                      .arg(upright)
                      .arg(360 - options.rotation)
                      .arg(path));
        QFile::remove(upright);
    }
    return path;
}

QString makeHDRClip(const QString &path, const char *transfer) {
    runFFmpeg(QStringLiteral("-f lavfi -i testsrc2=size=320x180:rate=25 -frames:v 2 -pix_fmt "
                             "yuv420p10le -c:v libx265 -preset ultrafast -x265-params "
                             "log-level=none:colorprim=bt2020:transfer=%1:colormatrix=bt2020nc %2")
                  .arg(QLatin1String(transfer), path));
    return path;
}

std::optional<int> frameNumber(QSize size, int quarterTurns,
                               const std::function<double(int x, int y)> &brightness) {
    const auto isBright = [&](int block) -> std::optional<bool> {
        // The center of the block in the stored frame, then rotated.
        double across = (block % kColumns + 0.5) / kColumns;
        double down = (block / kColumns + 0.5) / kRows; // NOLINT(bugprone-integer-division)
        for (int turn = 0; turn < quarterTurns; ++turn) {
            across = 1 - std::exchange(down, across);
        }
        const double value = brightness(int(across * size.width()), int(down * size.height()));
        return value > 0.3 && value < 0.7 ? std::nullopt : std::optional(value >= 0.7);
    };
    int number = 0;
    for (int block = 0; block <= kBits + 1; ++block) {
        const std::optional<bool> bright = isBright(block);
        if (!bright || (block == 0 && !*bright) || (block > kBits && *bright)) {
            return std::nullopt;
        }
        if (block > 0 && *bright) {
            number |= 1 << (block - 1);
        }
    }
    return number;
}

std::optional<int> frameNumber(const media::RGBImage &image, int quarterTurns) {
    return frameNumber({image.width, image.height}, quarterTurns, [&](int x, int y) {
        const qsizetype pixel = qsizetype(y) * image.width + x;
        return uchar(image.pixels.at(pixel * 3)) / 255.0;
    });
}

std::optional<int> frameNumber(const AVFrame &picture) {
    const AVPixFmtDescriptor *format = av_pix_fmt_desc_get(AVPixelFormat(picture.format));
    if (!format) {
        return std::nullopt;
    }
    const double white = (1 << format->comp[0].depth) - 1;
    return frameNumber({picture.width, picture.height}, 0, [&](int x, int y) {
        quint16 value = 0;
        av_read_image_line(&value, const_cast<const uint8_t **>(picture.data), picture.linesize,
                           format, x, y, 0, 1, 0);
        return value / white;
    });
}

media::RGBImage decodedJPEG(const QByteArray &bytes) {
    media::RGBImage image;
    tjhandle decoder = tjInitDecompress();
    const auto *from = reinterpret_cast<const unsigned char *>(bytes.constData());
    int sampling = 0;
    int colours = 0;
    if (tjDecompressHeader3(decoder, from, bytes.size(), &image.width, &image.height, &sampling,
                            &colours) == 0) {
        image.pixels.resize(qsizetype(image.width) * image.height * 3);
        tjDecompress2(decoder, from, bytes.size(),
                      reinterpret_cast<unsigned char *>(image.pixels.data()), image.width, 0,
                      image.height, TJPF_RGB, 0);
    }
    tjDestroy(decoder);
    return image;
}

} // namespace corvane::test
