#pragma once

#include "media/ExportSession.h"

namespace corvane::media {

/// The export sessions of this build. Pictures are encoded as H.264 of visually lossless quality,
/// sound as AAC; `passthrough` copies what an MPEG-4 file holds and refuses the rest when the
/// session is made. One object for the life of the process; any thread.
ExportSessionFactory &ffmpegExportSessions();

} // namespace corvane::media
