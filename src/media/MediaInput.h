#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"
#include "media/MediaTime.h"

#include <QString>

#include <optional>
#include <stop_token>

namespace corvane::media {

/// Of the times that hold for a container as a whole.
constexpr AVRational kContainerTimeBase = {1, AV_TIME_BASE};

/// A local media file opened for reading, the one way in which this floor opens one.
///
/// What a file says is believed within limits: only containers of film and sound are taken (no
/// playlist, picture series or text), no other file or address is ever opened for it, probing reads
/// a bounded part, and streams, headers and blocks of memory are bounded whatever it claims. Throws
/// `MediaError`, and `Cancelled` soon after the stop token asks for it. One thread at a time.
class MediaInput {
  public:
    /// What must be known before the first packet.
    enum class Depth {
        Facts,      ///< the streams' sizes, codecs and rates
        Timestamps, ///< also what their packets' presentation times depend on
        Coding,     ///< also the colours, fields and rates that only the coded data tell
    };

    MediaInput(const QString &path, Depth depth, std::stop_token stop = {});
    ~MediaInput();
    Q_DISABLE_COPY_MOVE(MediaInput)

    AVFormatContext *context() const { return m_context.get(); }
    /// The first stream of moving pictures, or null: attached pictures don't count.
    AVStream *firstVideoStream() const;

    /// Where the asset's presentation begins on the container's own axis.
    qint64 startTime() const { return m_startTime; }
    std::optional<MediaTime> duration() const;

    /// Reads the next packet of the streams that aren't discarded. False at the end of what can be
    /// read; damaged parts are passed over.
    bool read(AVPacket &packet);
    /// To the last key frame of the stream that the container knows no later than `timestamp`, in
    /// the stream's time base, or somewhere near; false where the container can't.
    bool seek(const AVStream &stream, qint64 timestamp);
    /// To the first packet; false where the container can't.
    bool rewind(const AVStream &stream);

    void setStop(std::stop_token stop) { m_stop = std::move(stop); }
    /// Throws `Cancelled` where the stop token asks for it.
    void testStop() const;

  private:
    static int isStopped(void *asked);
    bool readsTooMuch() const;
    void open(const QString &path);
    bool headerTells(Depth depth) const;
    void findStartTime();
    void completeTimestamps();

    std::stop_token m_stop;
    InputHandle m_context;
    AVFormatContext *m_opened = nullptr; ///< while it is being opened, the library's
    bool m_isHeaderTooLong = false;
    qint64 m_startTime = 0;
};

/// Whether the stream is one of moving pictures.
bool isVideo(const AVStream &stream);
/// The frames a second that the stream tells of, 0/1 where it tells none, or more than any camera
/// takes and any player shows.
AVRational nominalRate(const AVStream &stream);
/// Whether it is a QuickTime or MPEG-4 file, whose header tells more than others'.
bool isQuickTime(const AVFormatContext &container);

} // namespace corvane::media
