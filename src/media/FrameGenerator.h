#pragma once

#include "media/MediaTime.h"
#include "media/RGBImage.h"

#include <QList>
#include <QSize>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace corvane::media {

/// Makes stills of frames of a file's first video track. Throws `MediaError`, and `Cancelled` soon
/// after the stop token is triggered. Not thread-safe.
class FrameGenerator {
  public:
    struct Options {
        bool appliesPreferredTrackTransform = true; ///< rotates for display
        QSize maximumSize;    ///< stills are scaled down to fit; empty for the full size
        double tolerance = 0; ///< seconds that a still may be off, if that is faster
    };

    FrameGenerator(const QString &path, Options options, std::stop_token stop = {});
    ~FrameGenerator();
    Q_DISABLE_COPY_MOVE(FrameGenerator)

    RGBImage imageAt(MediaTime time);

    /// Makes the stills of all `times` in the fastest order. Calls `take` with the index of
    /// each and its still, or with nullopt if it failed. Exceptions from `take` end the batch.
    void images(const QList<MediaTime> &times,
                const std::function<void(qsizetype index, std::optional<RGBImage>)> &take);

  private:
    struct Work;
    std::unique_ptr<Work> m_work;
};

} // namespace corvane::media
