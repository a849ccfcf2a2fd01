#include "media/FrameGenerator.h"

#include "media/RGBImageConverter.h"
#include "media/VideoReader.h"

#include <algorithm>
#include <numeric>

namespace corvane::media {

struct FrameGenerator::Work {
    VideoReader reader;
    RGBImageConverter converter;
    Options options;
};

FrameGenerator::FrameGenerator(const QString &path, Options options, std::stop_token stop)
    : m_work(new Work{.reader = VideoReader(
                          path, {.isSingleFrameRead = true, .reducedSize = options.maximumSize},
                          std::move(stop)),
                      .converter = {},
                      .options = options}) {}

FrameGenerator::~FrameGenerator() = default;

RGBImage FrameGenerator::imageAt(MediaTime time) {
    const Options &options = m_work->options;
    const double tolerance = std::min(options.toleranceBefore, options.toleranceAfter);
    const auto frame = m_work->reader.frameAt(time, tolerance);
    if (!frame) {
        throw MediaError(QStringLiteral("None of its pictures can be decoded."));
    }
    const int turns = options.appliesPreferredTrackTransform ? m_work->reader.quarterTurns() : 0;
    return m_work->converter.convert(*frame->avFrame, turns, options.maximumSize);
}

/// Makes the stills in the order of their times, to decode on from one to the next.
void FrameGenerator::images(
    const QList<MediaTime> &times,
    const std::function<void(qsizetype index, std::optional<RGBImage>)> &take) {
    QList<qsizetype> order(times.size());
    std::iota(order.begin(), order.end(), qsizetype(0));
    std::ranges::stable_sort(order, {}, [&](qsizetype index) { return times.at(index); });
    for (const qsizetype index : std::as_const(order)) {
        std::optional<RGBImage> image;
        try {
            image = imageAt(times.at(index));
        } catch (const MediaError &) {
            // The other stills may succeed.
        }
        take(index, std::move(image));
    }
}

} // namespace corvane::media
