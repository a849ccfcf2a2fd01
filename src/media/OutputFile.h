#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"

#include <QString>

#include <vector>

namespace corvane::media {

/// The MPEG-4 file that an export fills in place, by its path. What isn't finished is no playable
/// file, and removing it is the caller's.
///
/// Add the streams, set the metadata, `begin`, write, `finish`. Everything throws `MediaError`; a
/// full disk is told in the system's words.
class OutputFile {
  public:
    explicit OutputFile(const QString &path);
    ~OutputFile();
    Q_DISABLE_COPY_MOVE(OutputFile)

    AVFormatContext &context() const { return *m_context; }
    /// A stream whose packets come in the given time base. The file owns it.
    AVStream &addStream(AVRational timeBase);

    void begin();
    /// Takes the packet's content. Its timestamps are in the stream's given time base; they may be
    /// negative, and what comes before 0 is hidden by the stream's edit list. False for a packet
    /// that is too damaged for the file to hold, which is left out.
    bool write(AVPacket &packet, const AVStream &stream);
    /// Completes the file: nothing of it is held back any more.
    void finish();

  private:
    struct Track {
        AVRational timeBase;
        int64_t lastDecoded = AV_NOPTS_VALUE;
    };
    void repair(AVPacket &packet, Track &track) const;
    /// Throws where the file system refused to take what was written.
    void testWritten(int result, const char *what) const;

    AVFormatContext *m_context = nullptr;
    std::vector<Track> m_tracks;
};

} // namespace corvane::media
