#pragma once

// Internal to src/media.

#include "media/FFmpegExportSession.h"

#include <QSize>

namespace corvane::media {

/// Transcodes the first video stream and all audio streams. Copies the data streams that MPEG-4
/// files support.
class TranscodeSession : public FFmpegExportSession {
  public:
    /// Scales the video down to fit `bound`, if there is one. Throws `UnsupportedSource` if this
    /// build has no decoder for a stream.
    TranscodeSession(std::unique_ptr<ExportSource> source, std::optional<QSize> bound);

  protected:
    std::vector<Route> makeRoutes(const ExportCut &cut, OutputFile &output) const override;

  private:
    std::optional<QSize> m_bound;
};

} // namespace corvane::media
