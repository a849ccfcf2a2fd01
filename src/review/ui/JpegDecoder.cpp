#include "review/ui/JpegDecoder.h"

#include "platform/FileSystem.h"
#include "trust/PathSafety.h"

#include <QPainter>

#include <turbojpeg.h>

#include <memory>

namespace corvane::jpeg {

namespace {

struct DestroyDecoder {
    void operator()(void *decoder) const { tjDestroy(decoder); }
};

bool isFile(const QString &path, const QString &root) {
    return !path.isEmpty() && PathSafety::fileType(path) == FileType::Regular &&
           (root.isEmpty() || !PathSafety::reachesOutsideOrThroughSymlink(path, root));
}

/// Empty if the file can't be read or is too large.
QByteArray fileBytes(const QString &path, const QString &root) {
    if (!isFile(path, root)) {
        return {};
    }
    try {
        // The path may refer to another file by now, so the open one is checked.
        const Descriptor file = fileSystem().openForReading(path, FileSystem::Links::Refuse);
        const FileStatus status = fileSystem().status(file);
        if (status.type != FileType::Regular || status.size > kMaxFileBytes) {
            return {};
        }
        const QByteArray bytes = readAll(file, kMaxFileBytes);
        return bytes.size() > kMaxFileBytes ? QByteArray() : bytes;
    } catch (const FileError &) {
        return {};
    }
}

/// The smallest size supported by the decoder that covers `least`, at most the image's own size.
QSize decodedSize(QSize original, QSize least) {
    int count = 0;
    const tjscalingfactor *factors = tjGetScalingFactors(&count);
    QSize best = original;
    for (int which = 0; which < count; ++which) {
        const tjscalingfactor factor = factors[which];
        const QSize size(TJSCALED(original.width(), factor), TJSCALED(original.height(), factor));
        if (size.width() >= least.width() && size.height() >= least.height() &&
            size.width() < best.width()) {
            best = size;
        }
    }
    return best;
}

QImage decoded(const QByteArray &bytes, QSize least) {
    const std::unique_ptr<void, DestroyDecoder> decoder(tjInitDecompress());
    const auto *from = reinterpret_cast<const unsigned char *>(bytes.constData());
    int width = 0;
    int height = 0;
    int sampling = 0;
    int colours = 0;
    if (!decoder || tjDecompressHeader3(decoder.get(), from, bytes.size(), &width, &height,
                                        &sampling, &colours) != 0) {
        return {};
    }
    if (width <= 0 || height <= 0 || qint64(width) * height > kMaxPixels) {
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

/// The center of the image with the aspect ratio of `pixels`, scaled to that size.
QImage cropped(const QImage &image, QSize pixels) {
    const QSize part = pixels.scaled(image.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    const QRect rect(
        QPoint((image.width() - part.width()) / 2, (image.height() - part.height()) / 2), part);
    return image.copy(rect).scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage rounded(const QImage &image, double radius) {
    if (radius <= 0) {
        return image;
    }
    QImage result(image.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(image);
    painter.drawRoundedRect(QRectF(image.rect()), radius, radius);
    return result;
}

} // namespace

QImage decode(const DecodeRequest &request, const std::stop_token &stop) {
    if (stop.stop_requested() || request.pixels.isEmpty()) {
        return {};
    }
    const QByteArray bytes = fileBytes(
        isFile(request.path, request.root) ? request.path : request.fallbackPath, request.root);
    if (bytes.isEmpty() || stop.stop_requested()) {
        return {};
    }
    const QImage image = decoded(bytes, request.pixels);
    if (image.isNull() || stop.stop_requested()) {
        return {};
    }
    return rounded(cropped(image, request.pixels), request.radius);
}

} // namespace corvane::jpeg
