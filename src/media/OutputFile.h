#pragma once

// Internal to src/media.

#include "media/FFmpegHandles.h"

#include <QString>

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
    /// Completes and closes the file.
    void finish();

  private:
    struct OutputStream {
        AVRational timeBase; ///< of the packets passed to `write`
        int64_t lastDts = AV_NOPTS_VALUE;
    };
    void repairTimestamps(AVPacket &packet, OutputStream &stream) const;
    void checkWritten(int result) const;

    AVFormatContext *m_context = nullptr;
    std::vector<OutputStream> m_streams;
};

} // namespace corvane::media
