#pragma once

#include "media/ExportSession.h"

namespace corvane::media {

/// The factory of this build. Sessions encode video as visually lossless H.264 and audio as AAC.
/// With `passthrough`, `create` throws `UnsupportedSource` for video or audio that MPEG-4 files
/// don't support. One object for the lifetime of the process. Thread-safe.
ExportSessionFactory &ffmpegExportSessions();

} // namespace corvane::media
