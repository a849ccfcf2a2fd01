#pragma once

// Internal to src/media.

#include "media/MediaInput.h"

#include <QString>

#include <optional>
#include <stop_token>
#include <vector>

namespace corvane::media {

/// Converts a stream's timestamp exactly.
MediaTime mediaTime(int64_t ticks, AVRational timeBase);
/// Converts a time to a stream's ticks, by default to the nearest one.
int64_t ticksOf(MediaTime time, AVRational timeBase, AVRounding rounding = AV_ROUND_NEAR_INF);
MediaTime operator+(MediaTime left, MediaTime right);
MediaTime operator-(MediaTime left, MediaTime right);

/// The file that an export reads. Times are the file's own timestamps, on which the asset begins at
/// `start()`. Opening and reading throw `MediaError`, and `Cancelled` soon after the stop token is
/// triggered. Not thread-safe.
class ExportSource {
  public:
    explicit ExportSource(const QString &path);
    Q_DISABLE_COPY_MOVE(ExportSource)

    const AVFormatContext &context() const { return *m_input->context(); }
    const AVStream &stream(int index) const { return *context().streams[index]; }

    /// Index of the first video stream; attached pictures don't count.
    std::optional<int> video() const;
    /// Index of the stream that the cut and the progress refer to: the video, else the first audio
    /// stream. Requires one of them.
    int reference() const;
    /// Indexes of all streams of a type except attached pictures.
    std::vector<int> streamsOf(AVMediaType type) const;

    MediaTime start() const { return {m_input->startTime(), AV_TIME_BASE}; }
    std::optional<MediaTime> duration() const { return m_input->duration(); }

    /// Reads the next packet. Returns false at the end of the readable data; throws if any read of
    /// the file failed or ended before the file's end. If timestamps restart, as in concatenated
    /// files, they are made to continue.
    bool read(AVPacket &packet);
    /// Seeks to `time` or earlier in the stream, as precisely as the container allows. Returns true
    /// if that is the start of the file.
    bool seek(int stream, MediaTime time);
    /// Seeks to the first packet.
    void rewind();
    /// Discards the packets of all other streams; nullopt reads all streams again.
    void selectStream(std::optional<int> index);
    void setStop(std::stop_token stop);
    /// Throws `Cancelled` if the stop token is triggered. For long work between two packets.
    void throwIfStopped() const { m_input->throwIfStopped(); }

  private:
    /// Timestamps of one stream since the last seek.
    struct StreamClock {
        int64_t end = AV_NOPTS_VALUE; ///< of the last packet, in ticks
        MediaTime offset;             ///< added to the stream's timestamps
    };

    void continueTimestamps(AVPacket &packet);
    void resetClocks();

    QString m_path;
    std::stop_token m_stop;
    std::unique_ptr<MediaInput> m_input;
    std::vector<StreamClock> m_clocks; ///< by stream index
    MediaTime m_offset;                ///< the largest of all streams
};

} // namespace corvane::media
