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

/// Takes still pictures out of a file's first video track. Made for one file, used on one thread at
/// a time. Throws `MediaError`, and `Cancelled` soon after the stop token asks for it.
class FrameGenerator {
  public:
    /// How the pictures are made.
    struct Options {
        bool appliesPreferredTrackTransform = true; ///< upright, as a player shows it
        QSize maximumSize;                          ///< fits inside, never enlarged; empty: as is
        double toleranceBefore = 0;                 ///< seconds
        double toleranceAfter = 0;
    };

    FrameGenerator(const QString &path, Options options, std::stop_token stop = {});
    ~FrameGenerator();
    Q_DISABLE_COPY_MOVE(FrameGenerator)

    RGBImage imageAt(MediaTime time);

    /// All of `times` in one go, each handed to `take` with its index as it is made, in whatever
    /// order is quickest; nothing in place of one that couldn't be made. What `take` throws ends
    /// the batch.
    void images(const QList<MediaTime> &times,
                const std::function<void(qsizetype index, std::optional<RGBImage>)> &take);

  private:
    struct Work;
    std::unique_ptr<Work> m_work;
};

} // namespace corvane::media
