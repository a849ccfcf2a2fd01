#pragma once

// For the source files of this floor only.

#include "media/FFmpegExportSession.h"

#include <QSize>

namespace corvane::media {

/// Encodes the first picture stream and every sound anew; data that an MPEG-4 file holds come
/// along.
class TranscodeSession : public FFmpegExportSession {
  public:
    /// The picture fits inside `bound`, or keeps its size without one. Throws `UnsupportedSource`
    /// where a stream can't be decoded by this build.
    TranscodeSession(std::unique_ptr<ExportSource> source, std::optional<QSize> bound);

  protected:
    std::vector<Way> makeWays(const ExportCut &cut, OutputFile &output) const override;

  private:
    std::optional<QSize> m_bound;
};

} // namespace corvane::media
