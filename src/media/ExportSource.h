#pragma once

// For the source files of this floor only.

#include "media/MediaInput.h"

#include <QString>

#include <optional>
#include <stop_token>
#include <vector>

namespace corvane::media {

/// A stream's timestamp as a time, exactly.
MediaTime mediaTime(int64_t ticks, AVRational timeBase);
/// A time in a stream's ticks, by default the nearest.
int64_t ticksOf(MediaTime time, AVRational timeBase, AVRounding rounding = AV_ROUND_NEAR_INF);
MediaTime operator+(MediaTime left, MediaTime right);
MediaTime operator-(MediaTime left, MediaTime right);

/// The file that an export reads. Its times are the file's own timestamps: the asset's 0 lies at
/// `start()` on their axis. One thread at a time. Opening and reading throw `MediaError`, and
/// `Cancelled` soon after the stop token asks for it.
class ExportSource {
  public:
    explicit ExportSource(const QString &path);
    Q_DISABLE_COPY_MOVE(ExportSource)

    const AVFormatContext &context() const { return *m_input->context(); }
    const AVStream &stream(int index) const { return *context().streams[index]; }
    int streamCount() const { return int(context().nb_streams); }

    /// The first picture that isn't a cover.
    std::optional<int> video() const;
    /// What times are reckoned by: the first picture, or the first sound.
    int reference() const;
    /// Every stream of a type, covers left out.
    std::vector<int> streamsOf(AVMediaType type) const;

    MediaTime start() const { return {m_input->startTime(), AV_TIME_BASE}; }
    std::optional<MediaTime> duration() const { return m_input->duration(); }

    /// The next packet of the file; false at its end, which for a damaged file is where nothing
    /// more can be read. Where timestamps begin again, as in files put one after the other, they go
    /// on instead. Throws where the file system fails.
    bool read(AVPacket &packet);
    /// Goes to a place in the stream no later than `time` as far as the file lets itself be
    /// searched. True where it is the very beginning.
    bool seek(int stream, MediaTime time);
    void rewind();
    /// Has only this stream's packets read, or again those of all.
    void readOnly(std::optional<int> stream);
    void setStop(std::stop_token stop);
    /// For work between two packets that may take long. Throws `Cancelled`.
    void testStop() const { m_input->testStop(); }

  private:
    /// Of a stream since the last jump.
    struct Clock {
        int64_t end = AV_NOPTS_VALUE; ///< of the last packet, in the stream's ticks
        MediaTime added;
    };

    void goOn(AVPacket &packet);

    QString m_path;
    std::stop_token m_stop;
    std::unique_ptr<MediaInput> m_input;
    std::vector<Clock> m_clocks;
    MediaTime m_added; ///< by the stream that came to the last new beginning first
};

} // namespace corvane::media
