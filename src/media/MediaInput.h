#pragma once

// Internal to src/media.

#include "media/MediaIO.h"
#include "media/MediaTime.h"

#include <QString>

#include <optional>
#include <stop_token>

namespace corvane::media {

/// Time base of a container's own times.
constexpr AVRational kContainerTimeBase = {1, AV_TIME_BASE};

/// A local media file opened for reading. The only code that opens one with FFmpeg.
///
/// Files are untrusted: only video and audio containers are accepted (no playlists, image sequences
/// or text), no other file or URL is ever opened on their behalf, and probing, stream count, header
/// and allocations are bounded. Throws `MediaError`, and `Cancelled` soon after the stop token is
/// triggered. Not thread-safe.
class MediaInput {
  public:
    /// How much is known about the streams before the first packet is read.
    enum class Depth {
        Facts,      ///< size, codec and rate
        Timestamps, ///< also what PTS depend on
        Coding,     ///< also colours, fields and rates found only in the coded data
    };

    MediaInput(const QString &path, Depth depth, std::stop_token stop = {});
    ~MediaInput();
    Q_DISABLE_COPY_MOVE(MediaInput)

    AVFormatContext *context() const { return m_context.get(); }

    /// Start of the asset in the container's time base.
    qint64 startTime() const { return m_startTime; }
    /// nullopt if unknown.
    std::optional<MediaTime> duration() const;

    /// Reads the next packet of the streams that aren't discarded. Skips damaged parts. Returns
    /// false at the end of the readable data.
    bool read(AVPacket &packet);
    /// Seeks to the last keyframe at or before `timestamp`, in the stream's time base, as precisely
    /// as the container allows. Returns false if it can't seek.
    bool seek(const AVStream &stream, qint64 timestamp);
    /// Seeks to the first packet. Returns false if the container can't.
    bool rewind(const AVStream &stream);

    /// The `errno` code of the first failed read, or 0. Readers skip what they can't read.
    int readFault() const { return m_io->fault(); }
    void setStop(std::stop_token stop) { m_stop = std::move(stop); }
    void throwIfStopped() const;

  private:
    static int shouldInterrupt(void *self);
    bool isHeaderTooLong() const;
    void open(const QString &path);
    bool isHeaderSufficient(Depth depth) const;
    void findStartTime();
    void completeTimestamps();

    std::stop_token m_stop;
    std::unique_ptr<InputIO> m_io;
    InputHandle m_context;
    AVFormatContext *m_opening = nullptr; ///< owned by FFmpeg while the file is being opened
    bool m_hasLongHeader = false;
    qint64 m_startTime = 0;
};

/// Whether it is a video stream and not an attached picture.
bool isVideo(const AVStream &stream);
/// The first stream for which `isVideo` is true; nullptr if there is none.
AVStream *firstVideoStream(const AVFormatContext &container);
/// Frames per second; 0/1 if unknown or implausibly high.
AVRational nominalRate(const AVStream &stream);
/// Whether it is a QuickTime or MPEG-4 file.
bool isQuickTime(const AVFormatContext &container);

} // namespace corvane::media
