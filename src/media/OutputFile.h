#pragma once

// Internal to src/media.

#include "media/MediaInput.h"

#include <stop_token>
#include <vector>

namespace corvane::media {

/// The MPEG-4 file that an export writes in place. Playable only after `finish`; the caller removes
/// it after a failure.
///
/// Call order: `addStream`, metadata in `context`, `begin`, `write`, `finish`. All of them throw
/// `MediaError`, for a full disk with the system's error text.
class OutputFile {
  public:
    explicit OutputFile(const QString &path);
    ~OutputFile();
    Q_DISABLE_COPY_MOVE(OutputFile)

    AVFormatContext &context() const { return *m_context; }
    /// Adds a stream whose packets have timestamps in `timeBase`. Owned by the file.
    AVStream &addStream(AVRational timeBase);

    void begin();
    /// Moves the packet into the file. Timestamps may be negative: the stream's edit list hides
    /// packets before 0. Returns false for a packet that is too damaged, which is left out.
    bool write(AVPacket &packet, const AVStream &stream);
    /// Completes and closes the file, then opens it once more and compares its size, its duration
    /// and the last packet of each video and audio stream with what was written. Throws `Cancelled`
    /// soon after the stop token is triggered.
    void finish(const std::stop_token &stop);

  private:
    struct OutputStream {
        AVRational timeBase; ///< of the packets passed to `write`
        int64_t lastDts = AV_NOPTS_VALUE;
        int64_t lastPts = AV_NOPTS_VALUE; ///< the highest one written
    };
    void repairTimestamps(AVPacket &packet, OutputStream &stream) const;
    void checkWritten(int result) const;
    void readBack(const std::stop_token &stop) const;
    bool hasAllPackets(MediaInput &input) const;

    QString m_path;
    std::unique_ptr<OutputIO> m_io;
    AVFormatContext *m_context = nullptr;
    std::vector<OutputStream> m_streams;
};

} // namespace corvane::media
