#include "media/RGBImage.h"

#include "media/MediaError.h"

#include <turbojpeg.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace corvane::media {

QByteArray RGBImage::encodedJPEG(double quality) const {
    if (isNull() || pixels.size() != qsizetype(width) * height * 3) {
        throw MediaError(QStringLiteral("There is no picture to encode."));
    }
    const std::unique_ptr<void, decltype(&tjDestroy)> compressor(tjInitCompress(), &tjDestroy);
    if (!compressor) {
        throw std::bad_alloc();
    }
    const int percent = int(std::lround(std::clamp(quality, 0.01, 1.0) * 100));
    unsigned char *bytes = nullptr;
    unsigned long size = 0;
    const int result =
        tjCompress2(compressor.get(), reinterpret_cast<const unsigned char *>(pixels.constData()),
                    width, 0, height, TJPF_RGB, &bytes, &size, TJSAMP_420, percent, 0);
    const std::unique_ptr<unsigned char, decltype(&tjFree)> owner(bytes, &tjFree);
    if (result != 0) {
        throw MediaError(QString::fromUtf8(tjGetErrorStr2(compressor.get())));
    }
    return {reinterpret_cast<const char *>(bytes), qsizetype(size)};
}

} // namespace corvane::media
