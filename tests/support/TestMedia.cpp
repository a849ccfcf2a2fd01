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
    const QStringList rate = options.rate.split(QLatin1Char('/'));
    return options.frames * rate.value(1, QStringLiteral("1")).toDouble() / rate.first().toDouble();
}

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList inputs(const ClipOptions &options) {
    QStringList arguments;
    if (options.frames > 0) {
        arguments << words("-f rawvideo -pix_fmt gray -s")
                  << QStringLiteral("%1x%2").arg(options.size.width()).arg(options.size.height())
                  << words("-r") << options.rate << words("-i pipe:0");
    }
    const double length = options.audioSeconds > 0 ? options.audioSeconds : seconds(options);
    for (int track = 0; track < options.audioTracks; ++track) {
        arguments << words("-f lavfi -t") << QString::number(length) << words("-i")
                  << QStringLiteral("sine=frequency=%1:sample_rate=48000").arg(440 * (track + 1));
    }
    const int streams = options.audioTracks + (options.frames > 0 ? 1 : 0);
    for (int stream = 0; stream < streams; ++stream) {
        arguments << words("-map") << QString::number(stream);
    }
    return arguments;
}

QStringList presetOf(const ClipOptions &options) {
    const QString closed = QString::number(options.openGop ? 1 : 0);
    if (options.codec == QStringLiteral("libx264")) {
        return words("-preset ultrafast -crf 12 -sc_threshold 0 -x264-params")
               << QStringLiteral("open-gop=%1:b-adapt=0").arg(closed);
    }
    if (options.codec == QStringLiteral("libx265")) {
        return words("-preset ultrafast -crf 12 -x265-params")
               << QStringLiteral("log-level=none:scenecut=0:b-adapt=0:open-gop=%1:keyint=%2:"
                                 "min-keyint=%2:bframes=%3")
                      .arg(closed)
                      .arg(options.gop)
                      .arg(options.bFrames);
    }
    if (options.codec == QStringLiteral("libsvtav1")) {
        return words("-preset 12 -crf 20");
    }
    if (options.codec == QStringLiteral("libvpx-vp9")) {
        return words("-deadline realtime -cpu-used 8 -b:v 2M");
    }
    return options.codec == QStringLiteral("dnxhd") ? QStringList() : words("-q:v 2");
}

QStringList videoEncoding(const ClipOptions &options) {
    if (options.frames == 0) {
        return words("-vn");
    }
    QStringList arguments = words("-c:v")
                            << options.codec << presetOf(options) << words("-pix_fmt")
                            << options.pixelFormat << words("-g") << QString::number(options.gop);
    if (options.bFrames > 0 && options.codec != QStringLiteral("libx265")) {
        arguments << words("-bf") << QString::number(options.bFrames);
    }
    if (options.interlaced) {
        arguments << words("-flags +ilme+ildct -top 1");
    }
    const bool isTimed = options.videoDelay > 0 || !options.milliseconds.isEmpty();
    if (!isTimed) {
        return options.interlaced ? arguments << words("-vf setfield=tff") : arguments;
    }
    const QString times = options.milliseconds.isEmpty()
                              ? QStringLiteral("PTS")
                              : QStringLiteral("(%1)/1000/TB").arg(options.milliseconds);
    // The default mode would repeat frames to fill gaps.
    arguments << words("-fps_mode passthrough -enc_time_base 1/90000 -vf")
              << QStringLiteral("settb=1/90000,setpts='%1+%2/TB'%3")
                     .arg(times)
                     .arg(options.videoDelay)
                     .arg(options.interlaced ? QStringLiteral(",setfield=tff") : QString());
    return arguments;
}

} // namespace

void runFFmpeg(const QStringList &arguments, const QByteArray &input) {
    const QStringList command = QStringList{QStringLiteral("ffmpeg"), QStringLiteral("-v"),
                                            QStringLiteral("error"), QStringLiteral("-y")} +
                                arguments;
    EXPECT_EQ(runCommand(command, input).exitCode, 0)
        << command.join(QLatin1Char(' ')).toStdString();
}

QString makeClip(const QString &path, const ClipOptions &options) {
    QByteArray frames;
    for (int number = 0; number < options.frames; ++number) {
        frames += drawnFrame(options.size, number);
    }
    const QString extension = path.mid(path.lastIndexOf(QLatin1Char('.')));
    const QString upright =
        options.rotation == 0 ? path : path + QStringLiteral(".upright") + extension;
    runFFmpeg(inputs(options) << videoEncoding(options) << words("-c:a") << options.audioCodec
                              << options.arguments << upright,
              frames);
    if (upright != path) {
        // ffmpeg only sets a rotation when it copies the stream, and counts counter-clockwise.
        runFFmpeg(words("-i") << upright << words("-map 0 -c copy -metadata:s:v:0")
                              << QStringLiteral("rotate=%1").arg(360 - options.rotation) << path);
        QFile::remove(upright);
    }
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
