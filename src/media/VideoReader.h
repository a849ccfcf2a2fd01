#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"
#include "media/MediaTime.h"

#include <QSize>
#include <QString>

#include <optional>
#include <stop_token>

namespace corvane::media {

/// One decoded picture with its place on the asset's axis. Copies share the picture's memory.
struct VideoFrame {
    std::shared_ptr<const AVFrame> avFrame;
    MediaTime time; ///< exact, in the stream's timescale; the asset's start is 0
    MediaTime end;  ///< where the next frame begins, as far as the stream tells

    /// Of the picture's memory.
    qsizetype byteCount() const;
};

/// The first video stream of a file, decoded in presentation order from any time on.
///
/// One thread at a time. Opening and reading throw `MediaError`, and `Cancelled` soon after the
/// stop token asks for it. Damaged parts are passed over; frames that a decoder could only guess
/// (before the first key frame after a seek) are never given.
class VideoReader {
  public:
    struct Options {
        int threads = 0; ///< of the decoder; 0 for what keeps all cores busy
        /// True where only single pictures are wanted, so that a decoder that works on several
        /// frames at once would only add to the wait.
        bool isSingleFrameRead = false;
        /// What the pictures are made to fit in afterwards; empty where they stay as they are. From
        /// much larger ones the decoder leaves out what can't be seen any more.
        QSize reducedSize = {};
    };

    explicit VideoReader(const QString &path, Options options, std::stop_token stop = {});
    ~VideoReader();
    Q_DISABLE_COPY_MOVE(VideoReader)

    /// The duration, the stream's facts and its display matrix in quarter turns.
    std::optional<MediaTime> duration() const;
    QSize storedSize() const;
    double nominalFrameRate() const; ///< 0 where the stream tells none
    int quarterTurns() const;        ///< clockwise, 0 to 3, that show the picture upright

    /// The frame that `time` names: the last one that begins no later (see `kHalfTick`), or the
    /// first or last one beyond the ends. With a tolerance any frame no further from `time` than
    /// that will do, and the quickest is given. Nothing only where no frame can be decoded.
    std::optional<VideoFrame> frameAt(MediaTime time, double tolerance = 0);

    /// The frame after the last one given; nothing at the end. From the start where none was.
    std::optional<VideoFrame> next();

    /// The last key frame before `time`, as far as the file's index tells: where decoding begins.
    std::optional<MediaTime> keyframeBefore(MediaTime time) const;

    /// How many seconds of film lie between where this stands and `time`, where going on is the
    /// shortest way there; nothing where it is to begin anew.
    std::optional<double> secondsToDecode(MediaTime time) const;
    /// Whether beginning anew at a key frame is quick around `time`, as far as the index tells.
    bool hasCloseKeyframes(MediaTime time) const;
    /// `Options::isSingleFrameRead` for what is read from now on.
    void setSingleFrameRead(bool only);

    /// Makes the following calls watch another token.
    void setStop(std::stop_token stop);

  private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
};

} // namespace corvane::media
