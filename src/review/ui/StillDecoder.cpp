#include "review/ui/StillDecoder.h"

#include "platform/FileSystem.h"

#include <QPainter>

#include <turbojpeg.h>

#include <memory>

namespace corvane::stills {

namespace {

struct EndDecoder {
    void operator()(void *decoder) const { tjDestroy(decoder); }
};

bool isFile(const QString &path) {
    const auto status = path.isEmpty() ? std::nullopt : fileSystem().linkStatus(path);
    return status && status->type == FileType::Regular;
}

/// Empty for what can't be read as a picture's file.
QByteArray fileBytes(const QString &path) {
    if (!isFile(path)) {
        return {};
    }
    try {
        // Another may have taken the file's place since; what is open is what counts.
        const Descriptor file = fileSystem().openForReading(path, FileSystem::Links::Refuse);
        const FileStatus status = fileSystem().status(file);
        if (status.type != FileType::Regular || status.size > kMostFileBytes) {
            return {};
        }
        const QByteArray bytes = readAll(file, kMostFileBytes);
        return bytes.size() > kMostFileBytes ? QByteArray() : bytes;
    } catch (const FileError &) {
        return {};
    }
}

/// The smallest size that the decoder gives which still covers `least`; the picture's own where
/// none does.
QSize decodedSize(QSize whole, QSize least) {
    int count = 0;
    const tjscalingfactor *factors = tjGetScalingFactors(&count);
    QSize best = whole;
    for (int which = 0; which < count; ++which) {
        const tjscalingfactor factor = factors[which];
        const QSize size(TJSCALED(whole.width(), factor), TJSCALED(whole.height(), factor));
        if (size.width() >= least.width() && size.height() >= least.height() &&
            size.width() < best.width()) {
            best = size;
        }
    }
    return best;
}

QImage decoded(const QByteArray &bytes, QSize least) {
    const std::unique_ptr<void, EndDecoder> decoder(tjInitDecompress());
    const auto *from = reinterpret_cast<const unsigned char *>(bytes.constData());
    int width = 0;
    int height = 0;
    int sampling = 0;
    int colours = 0;
    if (!decoder || tjDecompressHeader3(decoder.get(), from, bytes.size(), &width, &height,
                                        &sampling, &colours) != 0) {
        return {};
    }
    if (width <= 0 || height <= 0 || qint64(width) * height > kMostPixels) {
        return {};
    }
    const QSize size = decodedSize({width, height}, least);
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull() || tjDecompress2(decoder.get(), from, bytes.size(), image.bits(),
                                        size.width(), int(image.bytesPerLine()), size.height(),
                                        TJPF_BGRA, TJFLAG_STOPONWARNING | TJFLAG_LIMITSCANS) != 0) {
        return {};
    }
    return image;
}

/// The middle of the picture in the shape of `pixels`.
QImage cropped(const QImage &picture, QSize pixels) {
    const QSize part = pixels.scaled(picture.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    const QRect rect(
        QPoint((picture.width() - part.width()) / 2, (picture.height() - part.height()) / 2), part);
    return picture.copy(rect).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage rounded(const QImage &picture, double radius) {
    if (radius <= 0) {
        return picture;
    }
    QImage image(picture.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(picture);
    painter.drawRoundedRect(QRectF(picture.rect()), radius, radius);
    return image;
}

} // namespace

QImage picture(const Wanted &wanted, const std::stop_token &stop) {
    if (stop.stop_requested() || wanted.pixels.isEmpty()) {
        return {};
    }
    const QByteArray bytes = fileBytes(isFile(wanted.path) ? wanted.path : wanted.fallbackPath);
    if (bytes.isEmpty() || stop.stop_requested()) {
        return {};
    }
    const QImage whole = decoded(bytes, wanted.pixels);
    if (whole.isNull() || stop.stop_requested()) {
        return {};
    }
    return rounded(cropped(whole, wanted.pixels), wanted.radius);
}

} // namespace corvane::stills
