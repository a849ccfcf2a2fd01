#pragma once

// Internal to src/media.

#include "media/FFmpegHandles.h"

namespace corvane::media {

/// Detects packets that contain only non-reference frames, from the NAL unit headers of H.264 and
/// HEVC and from the container's flags. Immutable.
///
/// A decoder with `skip_frame` drops such packets too, but each of them still waits for its turn in
/// the frame threads, which keeps the threads from decoding several frames at once.
class NonReferenceDetector {
  public:
    explicit NonReferenceDetector(const AVCodecParameters &codec);

    /// Whether no other frame refers to the packet's frame. False if unknown.
    bool isNonReference(const AVPacket &packet) const;

  private:
    enum class FrameKind { unknown, nonReference, reference };
    FrameKind kindOfUnit(uint8_t header) const;
    FrameKind kindOf(const AVPacket &packet) const;

    AVCodecID m_codec;
    int m_lengthSize = 0; ///< bytes of the length before each NAL unit; 0 if start codes are used
};

} // namespace corvane::media
