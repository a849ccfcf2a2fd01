#pragma once

#include "platform/Failure.h"

namespace corvane::media {

/// Thrown if a media file can't be opened, decoded or written. The description names the failed
/// operation and FFmpeg's error text, or a fault that this program detected itself.
class MediaError : public Failure {
  public:
    using Failure::Failure;
};

} // namespace corvane::media
