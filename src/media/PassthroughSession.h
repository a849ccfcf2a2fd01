#pragma once

// For the source files of this floor only.

#include "media/FFmpegExportSession.h"

namespace corvane::media {

/// Copies every stream of pictures and sound as it is, and the data that an MPEG-4 file holds.
class PassthroughSession : public FFmpegExportSession {
  public:
    /// Throws `UnsupportedSource` where an MPEG-4 file can't hold a picture or a sound.
    explicit PassthroughSession(std::unique_ptr<ExportSource> source);

  protected:
    std::vector<Way> makeWays(const ExportCut &cut, OutputFile &output) const override;
};

} // namespace corvane::media
