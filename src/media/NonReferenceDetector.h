#pragma once

// For the source files of this floor only.

#include "media/FFmpegHandles.h"

namespace corvane::media {

/// Tells of a stream's packets which hold only a picture that no other refers to, from the headers
/// of their units in H.264 and HEVC and from what the container says. A decoder that is told to
/// skip such pictures does so itself, but each of them then waits in turn for a thread that may be
/// at work on another, and the work on several pictures at once comes to an end. Immutable.
class NonReferenceDetector {
  public:
    explicit NonReferenceDetector(const AVCodecParameters &codec);

    /// False where it isn't known.
    bool contains(const AVPacket &packet) const;

  private:
    enum class Use { none, unreferenced, referenced };
    Use useOf(uint8_t header) const;
    Use usedIn(const AVPacket &packet) const;

    AVCodecID m_codec;
    int m_lengthSize = 0; ///< of each unit's length before it; 0 where start codes part the units
};

} // namespace corvane::media
