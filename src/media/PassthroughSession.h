#pragma once

// Internal to src/media.

#include "media/FFmpegExportSession.h"

namespace corvane::media {

/// Copies all video and audio streams, and the data streams that MPEG-4 files support.
class PassthroughSession : public FFmpegExportSession {
  public:
    /// Throws `UnsupportedSource` if MPEG-4 files don't support a video or audio stream.
    explicit PassthroughSession(std::unique_ptr<ExportSource> source);

  protected:
    std::vector<Route> makeRoutes(const ExportCut &cut, OutputFile &output) const override;
};

} // namespace corvane::media
