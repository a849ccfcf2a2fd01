#pragma once

#include "platform/Failure.h"

namespace corvane::media {

/// A media file can't be opened, decoded or made. The description is the media library's own words
/// with what was tried, or this program's where it found the fault itself.
class MediaError : public Failure {
  public:
    using Failure::Failure;
};

} // namespace corvane::media
